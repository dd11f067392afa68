#include "persistence/ThermalHistory.h"
#include "report/JsonRecord.h"

namespace cindertop {

template <>
inline constexpr auto jsonFields<ThermalHistoryContextFlags> = std::tuple{
    JsonField{"hasExternalDisplay", &ThermalHistoryContextFlags::hasExternalDisplay},
    JsonField{"isProbableClamshell", &ThermalHistoryContextFlags::isProbableClamshell},
    JsonField{"isExternalPowerConnected", &ThermalHistoryContextFlags::isExternalPowerConnected},
    JsonField{"isLowPowerModeEnabled", &ThermalHistoryContextFlags::isLowPowerModeEnabled},
    JsonField{"isSustainedPressure", &ThermalHistoryContextFlags::isSustainedPressure},
    JsonField{"isIndexingOrSetupLikely", &ThermalHistoryContextFlags::isIndexingOrSetupLikely},
};

template <>
inline constexpr auto jsonFields<ThermalHistorySample> = std::tuple{
    JsonField{"measuredAt", &ThermalHistorySample::measuredAt},
    JsonField{"level", &ThermalHistorySample::level},
    JsonField{"score", &ThermalHistorySample::score},
    JsonField{"globalCPUPercent", &ThermalHistorySample::globalCPUPercent},
    JsonField{"temperatureCelsius", &ThermalHistorySample::temperatureCelsius},
    JsonField{"topOffenderLabel", &ThermalHistorySample::topOffenderLabel},
    JsonField{"topOffenderBundleIdentifier", &ThermalHistorySample::topOffenderBundleIdentifier},
    JsonField{"contextFlags", &ThermalHistorySample::contextFlags},
};

template <>
inline constexpr auto jsonFields<ThermalLevelDurations> = std::tuple{
    JsonField{"normal", &ThermalLevelDurations::normal},
    JsonField{"fair", &ThermalLevelDurations::fair},
    JsonField{"serious", &ThermalLevelDurations::serious},
    JsonField{"critical", &ThermalLevelDurations::critical},
};

template <>
inline constexpr auto jsonFields<ThermalDailySummary> = std::tuple{
    JsonField{"dayIdentifier", &ThermalDailySummary::dayIdentifier},
    JsonField{"levelDurations", &ThermalDailySummary::levelDurations},
    JsonField{"throttlingEpisodeCount", &ThermalDailySummary::throttlingEpisodeCount},
    JsonField{"criticalEpisodeCount", &ThermalDailySummary::criticalEpisodeCount},
    JsonField{"topOffenderCounts", &ThermalDailySummary::topOffenderCounts},
    JsonField{"topOffenderBundleIdentifiers", &ThermalDailySummary::topOffenderBundleIdentifiers},
    JsonField{"updatedAt", &ThermalDailySummary::updatedAt},
};

template <>
inline constexpr auto jsonFields<ThermalMonitoringSnapshot> = std::tuple{
    JsonField{"samples", &ThermalMonitoringSnapshot::samples},
    JsonField{"todaySummary", &ThermalMonitoringSnapshot::todaySummary},
};

template Json encodeJson(const ThermalHistorySample& value, Instant start);
template Json encodeJson(const ThermalDailySummary& value, Instant start);
template Json encodeJson(const ThermalMonitoringSnapshot& value, Instant start);

} // namespace cindertop
