#include "app/ThermalSnapshot.h"

namespace cindertop {

const ThermalSnapshot& ThermalSnapshot::idle() {
    static const ThermalSnapshot snapshot{.band = ThermalBand::normal,
                                          .level = ThermalLevel::normal,
                                          .score = 0,
                                          .effectIntensity = 0,
                                          .shouldTriggerEffects = false,
                                          .recommendedSamplingHz = 0.5,
                                          .temperatureCelsius = std::nullopt,
                                          .temperatureText = "--",
                                          .dataSource = ThermalDataSource::unavailable,
                                          .systemState = SystemThermalState::unavailable,
                                          .pressureLevel = ThermalPressureLevel::unavailable,
                                          .trend = ThermalTrend::stable};
    return snapshot;
}

ThermalSnapshot ThermalSnapshot::of(const ThermalScore& score, const TemperatureFormatter& temperatures) {
    return {.band = static_cast<ThermalBand>(score.level),
            .level = score.level,
            .score = score.score,
            .effectIntensity = score.effectIntensity,
            .shouldTriggerEffects = score.shouldTriggerEffects,
            .recommendedSamplingHz = score.recommendedSamplingHz,
            .temperatureCelsius = score.temperatureCelsius,
            .temperatureText = temperatures.text(score.temperatureCelsius).value_or("--"),
            .dataSource = score.dataSource,
            .systemState = score.systemState,
            .pressureLevel = score.pressureLevel,
            .trend = score.trend};
}

} // namespace cindertop
