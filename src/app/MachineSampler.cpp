#include "app/MachineSampler.h"

#include <utility>

namespace cindertop {

MachineSampler::MachineSampler(const MachineServices& services,
                               ProcessOffenderConfiguration offenderConfiguration)
    : services_(services), engines_(services), offenderConfiguration_(std::move(offenderConfiguration)) {
    engines_.setSensorsObserved(true); // whoever samples a machine shows what it finds
}

void MachineSampler::prime() {
    const auto now = services_.clock.now();
    const auto awake = awakeTime();
    // Throttle counters are read as differences. The score itself is half a one and must not make a trend.
    engines_.readScore(
        {.usesExperimentalSensors = false, .thresholds = ThermalTemperatureThresholds::defaults()});
    engines_.thermal.resetTrend();
    // The desktop's services answer a question only some time after it was asked.
    engines_.context.snapshot(std::nullopt, now, awake);
    engines_.cpuUsage.sample(now);
    takeCensus(now, awake);
}

MachineSnapshot MachineSampler::sample() {
    const auto now = services_.clock.now();
    const auto awake = awakeTime();
    const auto score = readScore();
    const auto context = engines_.context.snapshot(score, now, awake);
    const auto cpuPercent = engines_.cpuUsage.sample(now);
    if (nextCensus_.isDue(awake)) {
        takeCensus(now, awake);
        nextCensus_.scheduleAfter(awake, offenderSamplingInterval(offenders_.state, score.level));
        sources_ = services_.sources();
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

/// After a sleep everything begins afresh.
AwakeTime MachineSampler::awakeTime() {
    const auto [awake, hasSlept] = sleepWatch_.look(services_.clock.uptime());
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
