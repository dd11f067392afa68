#include "app/MachineSampler.h"

#include "context/SystemDisplayContextProvider.h"
#include "context/SystemPowerContextProvider.h"
#include "cpu/DarwinSystemCPUTimeProvider.h"
#include "cpu/SystemProcessCPUProvider.h"
#include "thermal/ExperimentalSensorTemperatureProvider.h"

#include <memory>
#include <utility>

namespace cindertop {

class MachineSampler::KeptTemperatures final : public TemperatureSensorProviding {
public:
    KeptTemperatures(TemperatureEvents& events, std::vector<TemperatureReading>& kept)
        : sensors_(events), kept_(kept) {}

    std::vector<TemperatureReading> readTemperatures() override {
        kept_ = sensors_.readTemperatures();
        return kept_;
    }

private:
    ExperimentalSensorTemperatureProvider sensors_;
    std::vector<TemperatureReading>& kept_;
};

MachineSampler::MachineSampler(const MachineServices& services,
                               ProcessOffenderConfiguration offenderConfiguration)
    : services_(services),
      thermalEngine_(
          SystemThermalStateProvider(services.process, DarwinThermalPressureProvider(services.pressureReader),
                                     services.clock),
          std::make_unique<KeptTemperatures>(services.temperatureEvents, temperatures_), ThermalScorer()),
      contextEngine_(std::make_unique<SystemDisplayContextProvider>(services.displays),
                     std::make_unique<SystemPowerContextProvider>(services.powerSources, services.process),
                     SustainedThermalPressureConfiguration::defaults()),
      cpuMonitor_(std::make_unique<DarwinSystemCPUTimeProvider>(services.hostStatistics)),
      offenderEngine_(std::make_unique<SystemProcessCPUProvider>(services.processes, services.applications),
                      services.comparison),
      offenderConfiguration_(std::move(offenderConfiguration)) {}

void MachineSampler::prime() {
    const auto now = services_.clock.now();
    // Throttle counters are read as differences. The score itself is half a one and must not make a trend.
    thermalEngine_.snapshot(
        {.usesExperimentalSensors = false, .thresholds = ThermalTemperatureThresholds::defaults()});
    thermalEngine_.resetTrend();
    // The desktop's services answer a question only some time after it was asked.
    contextEngine_.snapshot(std::nullopt, now);
    cpuMonitor_.sample(now);
    takeCensus(now);
}

MachineSnapshot MachineSampler::sample() {
    const auto now = services_.clock.now();
    const auto score = readScore();
    const auto context = contextEngine_.snapshot(score, now);
    const auto cpuPercent = cpuMonitor_.sample(now);
    if (schedule_.isDue(now)) {
        takeCensus(now);
        schedule_.sampled(now, offenders_.state, score.level);
        sources_ = services_.sources();
    }
    return {.score = score,
            .context = context,
            .offenders = offenders_,
            .cpuPercent = cpuPercent,
            .temperatures = temperatures_,
            .sources = sources_,
            .measuredAt = now};
}

MachineSnapshot MachineSampler::sampleNow() {
    schedule_ = {};
    return sample();
}

ThermalScore MachineSampler::readScore() {
    return thermalEngine_.snapshot(
        {.usesExperimentalSensors = true, .thresholds = ThermalTemperatureThresholds::defaults()});
}

void MachineSampler::takeCensus(Instant now) {
    offenders_ = offenderEngine_.snapshot(offenderConfiguration_, now);
}

} // namespace cindertop
