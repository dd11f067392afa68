#include "platform/linux/CpuCoolers.h"

#include "platform/linux/FileReading.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <string>
#include <system_error>
#include <vector>

namespace cindertop::linux_platform {

namespace {

using OptionalPath = std::optional<std::filesystem::path>;

/// The N of "cpuN".
std::optional<std::int64_t> processorNumber(std::string_view name) {
    const auto number = name.starts_with("cpu") ? parseInteger(name.substr(3)) : std::nullopt;
    return number && *number >= 0 ? number : std::nullopt;
}

std::vector<std::filesystem::path> policies(const std::filesystem::path& processors) {
    std::vector<std::filesystem::path> folders;
    for (const auto& name : listFolder(processors / "cpufreq").value_or(std::vector<std::string>{})) {
        if (name.starts_with("policy")) {
            folders.push_back(processors / "cpufreq" / name);
        }
    }
    return folders;
}

/// "0 1 2 3", as `related_cpus` says.
bool doesList(std::string_view numbers, std::string_view number) {
    while (!numbers.empty()) {
        const auto end = std::min(numbers.find(' '), numbers.size());
        if (numbers.substr(0, end) == number) {
            return true;
        }
        numbers.remove_prefix(std::min(end + 1, numbers.size()));
    }
    return false;
}

OptionalPath onlyPolicy(const std::filesystem::path& processors) {
    const auto folders = policies(processors);
    return folders.size() == 1 ? OptionalPath(folders.front()) : std::nullopt;
}

/// A processor that is offline has no folder of its own, but its policy still lists it.
OptionalPath policyOfProcessor(const std::filesystem::path& processors, std::int64_t processor) {
    const auto number = std::to_string(processor);
    std::error_code ignored;
    for (auto folder :
         {processors / ("cpu" + number) / "cpufreq", processors / "cpufreq" / ("policy" + number)}) {
        if (std::filesystem::is_directory(folder, ignored)) {
            return folder;
        }
    }
    const auto folders = policies(processors);
    const auto listing = std::ranges::find_if(folders, [&](const auto& policy) {
        return doesList(readAttribute(policy / "related_cpus").value_or(""), number);
    });
    return listing != folders.end() ? OptionalPath(*listing) : std::nullopt;
}

/// An ACPI processor's cooling device leads to the firmware's name of the processor, and that to the
/// kernel's.
std::optional<std::int64_t> processorOfAcpiCooler(const std::filesystem::path& cooler) {
    return processorNumber(
        linkedFolder(linkedFolder(cooler / "device") / "physical_node").filename().string());
}

} // namespace

FrequencyCap::FrequencyCap(const std::filesystem::path& policy)
    : allowed_(policy / "scaling_max_freq"), possible_(policy / "cpuinfo_max_freq") {}

std::optional<double> FrequencyCap::loss() {
    const auto allowed = allowed_.integer();
    const auto possible = possible_.integer();
    if (!allowed || !possible || *allowed < 0 || *possible <= 0) {
        return std::nullopt;
    }
    return std::max(0.0, 1 - static_cast<double>(*allowed) / static_cast<double>(*possible));
}

OptionalPath policyOfCooler(const Roots& roots, const std::filesystem::path& cooler, std::string_view type) {
    constexpr std::string_view prefix = "cpufreq-";
    const auto processors = roots.sys / "devices/system/cpu";
    std::optional<std::int64_t> processor;
    if (type.starts_with(prefix)) {
        processor = processorNumber(type.substr(prefix.size()));
    } else if (type == "Processor") {
        processor = processorOfAcpiCooler(cooler);
    } else if (!type.starts_with("thermal-cpufreq-")) { // that number counts cooling devices
        return std::nullopt;
    }
    return processor ? policyOfProcessor(processors, *processor) : onlyPolicy(processors);
}

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
