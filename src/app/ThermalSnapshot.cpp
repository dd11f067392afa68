#include "app/ThermalSnapshot.h"

namespace cindertop {

namespace {

ThermalBand bandOf(ThermalLevel level) {
    switch (level) {
    case ThermalLevel::normal:
        return ThermalBand::normal;
    case ThermalLevel::fair:
        return ThermalBand::fair;
    case ThermalLevel::serious:
        return ThermalBand::serious;
    case ThermalLevel::critical:
        return ThermalBand::critical;
    }
    return ThermalBand::normal;
}

} // namespace

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
    return {.band = bandOf(score.level),
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
