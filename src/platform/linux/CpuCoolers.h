#pragma once

#include "platform/linux/AttributeFile.h"
#include "platform/linux/DeviceFolder.h"
#include "platform/linux/FileReading.h"
#include "platform/linux/SystemClock.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string_view>
#include <vector>

namespace cindertop::linux_platform {

/// How far the maximum frequency of some processors is capped, by whomever: a user and a power manager set
/// the same cap as a cooling device does, so a cap alone tells nothing about heat. Not thread-safe.
class FrequencyCap {
public:
    /// `policy` is a cpufreq folder, for example "…/cpufreq/policy0".
    explicit FrequencyCap(const std::filesystem::path& policy);

    /// The share of the hardware's top frequency, 0 to 1, that is denied; none without an answer.
    std::optional<double> loss();

private:
    AttributeFile allowed_;
    AttributeFile possible_;
};

/// The cpufreq folder of the processors that a cooling device slows down through their frequency; none where
/// it uses other means or the processors cannot be told.
std::optional<std::filesystem::path> policyOfCooler(const Roots& roots, const std::filesystem::path& cooler,
                                                    std::string_view type);

/// Whether a cooling device of this type slows processors down. Fans, backlights, links, radios and chargers
/// do not; "TCC Offset" moves a threshold and is no throttling.
bool isCpuCooler(std::string_view type);

/// The share of the processor's speed, 0 to 1, that a cooling device in this state takes away. Below 0 is
/// idle.
double coolerLoss(std::int64_t currentState, std::int64_t highestState);

/// The cooling devices by which the kernel slows processors down. Types and ranges are cached and read again
/// when a device comes or goes, and every 30 s. Not thread-safe.
class CpuCoolers {
public:
    struct Reading {
        std::size_t answering;
        double loss; ///< the largest of the active ones, 0 to 1
    };

    CpuCoolers(const Roots& roots, const MonotonicClock& clock);

    /// None when no device that can slow a processor down answers.
    std::optional<Reading> read();

private:
    struct Cooler {
        std::int64_t highestState;
        AttributeFile currentState;
        std::optional<FrequencyCap> cap; ///< of the processors that it slows down, where they are known
        bool throttlesOtherwise;         ///< it can also skip clock pulses, which no frequency shows

        double loss(std::int64_t state);
    };

    void learnIfOutdated();

    Roots roots_;
    DeviceFolder folder_;
    std::vector<Cooler> coolers_;
};

} // namespace cindertop::linux_platform
