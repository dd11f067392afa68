#include "app/MachineSampler.h"

#include <utility>

namespace cindertop {

MachineSampler::MachineSampler(Machine machine, DarwinThermalPressureReader::Source pressureReader,
                               ProcessOffenderConfiguration offenderConfiguration)
    : machine_(std::move(machine)),
      engines_(machine_, std::move(pressureReader)),
      offenderConfiguration_(std::move(offenderConfiguration)) {
    engines_.setHardwareObserved(true); // what a sampler finds is being shown
}

void MachineSampler::prime() {
    const auto now = machine_.clock.now();
    const auto awake = awakeTime();
    // Throttle counters are read as differences. The score is incomplete and must not start a trend.
    engines_.readScore(
        {.usesExperimentalSensors = false, .thresholds = ThermalTemperatureThresholds::defaults()});
    engines_.thermal.resetTrend();
    // The desktop's services answer a question only some time after it was asked.
    engines_.context.snapshot(std::nullopt, now, awake);
    engines_.cpuUsage.sample(now);
    takeCensus(now, awake);
}

MachineSnapshot MachineSampler::sample() {
    const auto now = machine_.clock.now();
    const auto awake = awakeTime();
    const auto score = readScore();
    const auto context = engines_.context.snapshot(score, now, awake);
    const auto cpuPercent = engines_.cpuUsage.sample(now);
    if (nextCensus_.isDue(awake)) {
        takeCensus(now, awake);
        nextCensus_.scheduleAfter(awake, offenderSamplingInterval(offenders_.state, score.level));
        sources_ = machine_.sources();
    }
    return {.score = score,
            .context = context,
            .offenders = offenders_,
            .cpuPercent = cpuPercent,
            .temperatures = engines_.temperatures(),
            .sources = sources_,
            .measuredAt = now};
}

MachineSnapshot MachineSampler::sampleNow() {
    nextCensus_ = {};
    return sample();
}

ThermalScore MachineSampler::readScore() {
    return engines_.readScore(
        {.usesExperimentalSensors = true, .thresholds = ThermalTemperatureThresholds::defaults()});
}

/// After a sleep everything starts over.
AwakeTime MachineSampler::awakeTime() {
    const auto [awake, hasSlept] = sleepWatch_.look(machine_.clock.uptime());
    if (hasSlept) {
        engines_.reset();
        nextCensus_ = {};
    }
    return awake;
}

void MachineSampler::takeCensus(Instant now, AwakeTime awake) {
    offenders_ = engines_.offenders.snapshot(offenderConfiguration_, now, awake);
}

} // namespace cindertop
