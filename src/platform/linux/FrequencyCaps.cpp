#include "platform/linux/FrequencyCaps.h"

#include "platform/linux/FileReading.h"

#include <algorithm>
#include <chrono>
#include <string>

namespace cindertop::linux_platform {

FrequencyCaps::FrequencyCaps(const Roots& roots, const MonotonicClock& clock)
    : processors_(roots.sys / "devices/system/cpu"), folder_(roots, "devices/system/cpu/cpufreq", clock) {}

double FrequencyCaps::largestLoss() {
    learnIfOutdated();
    double largest = 0;
    for (auto& policy : policies_) {
        const auto allowed = policy.allowed.integer();
        const auto possible = policy.possible.integer();
        if (allowed && possible && *allowed >= 0 && *possible > 0) {
            largest = std::max(largest, 1 - static_cast<double>(*allowed) / static_cast<double>(*possible));
        }
    }
    return largest;
}

void FrequencyCaps::learnIfOutdated() {
    if (!folder_.isOutdated()) {
        return;
    }
    policies_.clear();
    for (const auto& folder : policyFolders()) {
        policies_.push_back({.allowed = AttributeFile(folder / "scaling_max_freq"),
                             .possible = AttributeFile(folder / "cpuinfo_max_freq")});
    }
}

std::vector<std::filesystem::path> FrequencyCaps::policyFolders() const {
    std::vector<std::filesystem::path> folders;
    for (const auto& name : listFolder(folder_.path()).value_or(std::vector<std::string>{})) {
        if (name.starts_with("policy")) {
            folders.push_back(folder_.path() / name);
        }
    }
    if (!folders.empty()) {
        return folders;
    }
    for (const auto& name : listFolder(processors_).value_or(std::vector<std::string>{})) {
        std::error_code ignored;
        if (auto folder = processors_ / name / "cpufreq";
            name.starts_with("cpu") && std::filesystem::is_directory(folder, ignored)) {
            folders.push_back(std::move(folder));
        }
    }
    return folders;
}

} // namespace cindertop::linux_platform
