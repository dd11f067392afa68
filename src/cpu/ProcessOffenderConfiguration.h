#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <string>

namespace cindertop {

class ProcessInformation;

/// How offenders are measured and which of them are shown.
struct ProcessOffenderConfiguration {
    /// As a `maximum...Count`: no limit.
    static constexpr std::int64_t noMaximum = std::numeric_limits<std::int64_t>::max();

    /// What a configuration is built from; the defaults are those of `defaultConfiguration`.
    struct Fields {
        std::int64_t processorCount{1};
        std::int32_t excludedProcessIdentifier{};
        std::optional<std::string> excludedBundleIdentifier{};
        double minimumVisibleCPUPercent{0.05};
        std::int64_t preferredMinimumOffenderCount{5};
        std::int64_t maximumOffenderCount{8};
        std::int64_t maximumChildCount{12};
        std::int64_t maximumHistoryCount{48};
        double indexingCPUThresholdPercent{1.0};
        double minimumVisibleGraphicsPercent{5.0};
        std::int64_t maximumDrawingOffenderCount{3};
        std::optional<std::string> pinnedOffenderID{};
    };

    std::int64_t processorCount;                         ///< at least 1
    std::int32_t excludedProcessIdentifier;              ///< this program itself
    std::optional<std::string> excludedBundleIdentifier; ///< this program's application
    double minimumVisibleCPUPercent;            ///< offenders from this share on are shown; never negative
    std::int64_t preferredMinimumOffenderCount; ///< this many are shown whatever their share; at least 1
    std::int64_t maximumOffenderCount;          ///< at least 1
    std::int64_t maximumChildCount;             ///< at least 1
    std::int64_t maximumHistoryCount;           ///< at least 2
    double indexingCPUThresholdPercent;         ///< indexing counts from this share on; never negative
    /// Offenders from this graphics share on are shown however little they compute, at most so many of them.
    /// Never negative.
    double minimumVisibleGraphicsPercent;
    std::int64_t maximumDrawingOffenderCount;
    std::optional<std::string> pinnedOffenderID; ///< stays listed while it uses CPU time

    /// Values below their bound become the bound; shares that are not a number become 0.
    explicit ProcessOffenderConfiguration(Fields fields);

    /// The standard values for this machine and program. Asks the system each time: compute it once and keep
    /// it.
    static ProcessOffenderConfiguration defaultConfiguration(const ProcessInformation& processInformation);

    bool operator==(const ProcessOffenderConfiguration&) const = default;
};

} // namespace cindertop
