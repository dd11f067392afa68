#include "platform/linux/LinuxProcessorClocks.h"

#include <algorithm>
#include <cstdint>
#include <string>

namespace cindertop::linux_platform {

namespace {

constexpr std::int64_t hertzOfKilohertz = 1000;
constexpr std::int64_t mostKilohertz = 100'000'000;
constexpr std::int64_t wholePercent = 100;

std::vector<std::filesystem::path> policyFolders(const std::filesystem::path& policies,
                                                 const std::filesystem::path& processors) {
    std::vector<std::filesystem::path> folders;
    for (const auto& name : listFolder(policies).value_or(std::vector<std::string>{})) {
        if (name.starts_with("policy")) {
            folders.push_back(policies / name);
        }
    }
    if (!folders.empty()) {
        return folders;
    }
    // Kernels before 4.3 keep a policy with its processor.
    for (const auto& name : listFolder(processors).value_or(std::vector<std::string>{})) {
        if (name.starts_with("cpu") && parseInteger(name.substr(3))) {
            folders.push_back(processors / name / "cpufreq");
        }
    }
    return folders;
}

double shareOf(const ClockLimit& clock) {
    return static_cast<double>(clock.allowedHertz) / static_cast<double>(clock.possibleHertz);
}

void include(ProcessorClockReading& reading, const ClockLimit& clock) {
    if (!reading.clock || !reading.mostHeld) {
        reading.clock = clock;
        reading.mostHeld = clock;
        return;
    }
    reading.clock = ClockLimit{.allowedHertz = std::max(reading.clock->allowedHertz, clock.allowedHertz),
                               .possibleHertz = std::max(reading.clock->possibleHertz, clock.possibleHertz)};
    if (shareOf(clock) < shareOf(*reading.mostHeld)) {
        reading.mostHeld = clock;
    }
}

} // namespace

LinuxProcessorClocks::LinuxProcessorClocks(const Roots& roots, const MonotonicClock& clock,
                                           LinuxThermalPressureNotifications& throttling)
    : folder_(roots, "devices/system/cpu/cpufreq", clock),
      processors_(roots, "devices/system/cpu", clock),
      percent_(roots.sys / "devices/system/cpu/intel_pstate/max_perf_pct"),
      throttling_(throttling) {}

ProcessorClockReading LinuxProcessorClocks::read() {
    learnIfOutdated();
    ProcessorClockReading reading;
    const auto percent = std::clamp(percent_.integer().value_or(wholePercent), std::int64_t{1}, wholePercent);
    for (auto& policy : policies_) {
        if (const auto clock = policy.read(percent)) {
            include(reading, *clock);
            reading.isHeldByFirmware = reading.isHeldByFirmware || policy.isHeldByFirmware(*clock);
        }
    }
    reading.isSlowedByHeat = throttling_.isSlowedByHeat();
    return reading;
}

void LinuxProcessorClocks::learnIfOutdated() {
    const bool arePoliciesOutdated = folder_.isOutdated();
    const bool areProcessorsOutdated = processors_.isOutdated();
    if (!arePoliciesOutdated && !areProcessorsOutdated) {
        return;
    }
    policies_.clear();
    const auto folders = policyFolders(folder_.path(), processors_.path());
    policies_.reserve(folders.size());
    for (const auto& folder : folders) {
        policies_.emplace_back(folder);
    }
}

LinuxProcessorClocks::Policy::Policy(const std::filesystem::path& folder)
    : allowed(folder / "scaling_max_freq"),
      possible(folder / "cpuinfo_max_freq"),
      firmwareLimit(folder / "bios_limit") {}

/// The policy of processors that are all offline does not answer.
std::optional<ClockLimit> LinuxProcessorClocks::Policy::read(std::int64_t percent) {
    const auto most = possible.integer();
    const auto now = allowed.integer();
    if (!most || !now || *most <= 0 || *most > mostKilohertz || *now <= 0) {
        return std::nullopt;
    }
    return ClockLimit{.allowedHertz = std::min(*now, *most * percent / wholePercent) * hertzOfKilohertz,
                      .possibleHertz = *most * hertzOfKilohertz};
}

/// The firmware holds a policy back where nobody else holds it lower.
bool LinuxProcessorClocks::Policy::isHeldByFirmware(const ClockLimit& clock) {
    const auto limit = firmwareLimit.integer();
    if (!limit || *limit <= 0 || *limit > mostKilohertz) {
        return false;
    }
    const auto hertz = *limit * hertzOfKilohertz;
    return hertz < clock.possibleHertz && hertz <= clock.allowedHertz;
}

} // namespace cindertop::linux_platform
