#include "platform/linux/CpuCoolers.h"

#include "platform/linux/FileReading.h"

#include <algorithm>
#include <chrono>
#include <string>

namespace cindertop::linux_platform {

bool isCpuCooler(std::string_view type) {
    return type == "Processor" || type == "intel_powerclamp" || type.starts_with("cpufreq-cpu") ||
           type.starts_with("thermal-cpufreq-") || type.starts_with("idle-") ||
           type.starts_with("thermal-idle-");
}

double coolerLoss(std::int64_t currentState, std::int64_t highestState) {
    if (currentState <= 0 || highestState <= 0) {
        return 0;
    }
    // In double precision: the range of a broken driver may end at the largest integer.
    return std::min(1.0, static_cast<double>(currentState) / (static_cast<double>(highestState) + 1));
}

CpuCoolers::CpuCoolers(const Roots& roots, const MonotonicClock& clock)
    : roots_(roots), folder_(roots, "class/thermal", clock) {}

std::optional<CpuCoolers::Reading> CpuCoolers::read() {
    learnIfOutdated();
    Reading reading{.answering = 0, .loss = 0};
    for (auto& cooler : coolers_) {
        if (const auto state = cooler.currentState.integer()) {
            ++reading.answering;
            reading.loss = std::max(reading.loss, cooler.loss(*state));
        }
    }
    return reading.answering > 0 ? std::optional(reading) : std::nullopt;
}

/// The frequency is exact where it answers: nine of fifteen states can be a loss of 29 %.
double CpuCoolers::Cooler::loss(std::int64_t state) {
    if (state <= 0) {
        return 0;
    }
    const auto denied = cap ? cap->loss() : std::nullopt;
    const bool isCapped = denied && (*denied > 0 || !throttlesOtherwise);
    return isCapped ? *denied : coolerLoss(state, highestState);
}

void CpuCoolers::learnIfOutdated() {
    if (!folder_.isOutdated()) {
        return;
    }
    coolers_.clear();
    for (const auto& name : listFolder(folder_.path()).value_or(std::vector<std::string>{})) {
        if (!name.starts_with("cooling_device")) {
            continue;
        }
        const auto folder = folder_.path() / name;
        const auto type = readAttribute(folder / "type").value_or("");
        const auto highest = isCpuCooler(type) ? readInteger(folder / "max_state") : std::nullopt;
        if (highest && *highest > 0) {
            coolers_.push_back({.highestState = *highest,
                                .currentState = AttributeFile(folder / "cur_state"),
                                .cap = policyOfCooler(roots_, folder, type).transform([](const auto& policy) {
                                    return FrequencyCap(policy);
                                }),
                                .throttlesOtherwise = type == "Processor"});
        }
    }
}

} // namespace cindertop::linux_platform
