#pragma once

#include "platform/linux/AttributeFile.h"
#include "platform/linux/Roots.h"

#include <filesystem>
#include <optional>
#include <string_view>

namespace cindertop::linux_platform {

/// How far the highest frequency of some processors is held down, by whomever: a user and a power manager set
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

} // namespace cindertop::linux_platform
