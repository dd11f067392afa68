#include "Require.h"
// What other processes and their owners decide: names, units, sandbox files, environments, launch lines. The
// first byte tells which of them the rest is.

#include "platform/linux/ApplicationHints.h"
#include "platform/linux/ControlGroups.h"
#include "platform/linux/LaunchCommand.h"
#include "platform/linux/ProcessStat.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <tuple>

namespace {

using namespace cindertop::linux_platform;

void tryStat(std::string_view text) {
    if (const auto stat = parseProcessStat(text)) {
        require(text.contains(stat->name));
        require(stat->name.starts_with(steadyName(stat->name)));
    }
}

/// The name ends at the first line end, the rest is the command line.
void tryNames(std::string_view text) {
    const auto end = text.find('\n');
    const auto shortName = text.substr(0, end);
    const auto commandLine = end == std::string_view::npos ? std::string_view{} : text.substr(end + 1);
    require(uncutName(shortName, commandLine).starts_with(shortName));
}

void tryUnit(const ControlGroupUnit& unit) {
    const auto application = parseUnit(unit);
    const auto isIdentifier = [](const std::string& id) {
        return !id.empty() && id.find('\0') == std::string::npos && id.find('/') == std::string::npos;
    };
    require(!application.flatpakId || isIdentifier(*application.flatpakId));
    require(!application.snapId || isIdentifier(*application.snapId));
    for (const auto& id : application.desktopIds) {
        require(isIdentifier(id));
    }
}

void tryControlGroup(std::string_view text) {
    if (const auto unit = parseControlGroup(text)) {
        require(text.contains(unit->name));
        tryUnit(*unit);
    }
}

void tryEnvironment(std::string_view text) {
    if (const auto file = launchedDesktopFile(text, 42)) {
        require(file->starts_with('/') && text.contains(*file));
    }
}

void tryExec(std::string_view text) {
    if (const auto command = parseExec(text)) {
        require(!command->program.empty() && !isLauncher(command->program));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const std::string_view text(reinterpret_cast<const char*>(data + 1), size - 1);
    switch (*data) {
    case 's':
        tryStat(text);
        break;
    case 'n':
        tryNames(text);
        break;
    case 'c':
        tryControlGroup(text);
        break;
    case 'u':
        tryUnit({.name = std::string(text), .userManager = "user@1000.service", .isBelowAppSlice = true});
        break;
    case 'f':
        std::ignore = flatpakApplication(text);
        break;
    case 'e':
        tryEnvironment(text);
        break;
    case 'x':
        tryExec(text);
        break;
    default:
        break;
    }
    return 0;
}
