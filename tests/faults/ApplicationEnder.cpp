#include "platform/linux/LinuxRunningApplications.h"

#include <charconv>
#include <iostream>
#include <string>
#include <string_view>

namespace {

using namespace cindertop;

/// What the "Quit App" and "Force Quit App" buttons do, of this machine's real processes.
int end(const RunningApplication& application) {
    linux_platform::LinuxRunningApplications applications;
    const auto found = applications.findByBundleIdentifier(application.bundleIdentifier.value_or(""));
    const bool isFound = found && found->processIdentifier == application.processIdentifier;
    const bool isAsked = applications.terminate(application);
    const bool isForced = applications.forceTerminate(application);
    std::cout << (isFound ? "found" : "not found") << (isAsked ? ", asked" : ", not asked")
              << (isForced ? ", forced" : ", not forced") << '\n';
    return 0;
}

} // namespace

/// usage: application-ender PROCESS IDENTIFIER PATH
int main(int count, char** words) {
    std::int32_t process = 0;
    const std::string_view number(count == 4 ? words[1] : "");
    if (std::from_chars(number.data(), number.data() + number.size(), process).ec != std::errc()) {
        std::cerr << "usage: application-ender PROCESS IDENTIFIER PATH\n";
        return 2;
    }
    return end({.processIdentifier = process, .bundleIdentifier = words[2], .bundlePath = words[3]});
}
