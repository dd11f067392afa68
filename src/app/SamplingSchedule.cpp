#include "app/SamplingSchedule.h"

#include <algorithm>
#include <chrono>

namespace cindertop {

namespace {

constexpr double slowestHz = 0.2;
constexpr double fastestHz = 5;

} // namespace

Seconds tickDelay(double recommendedSamplingHz) {
    return Seconds{recommendedSamplingHz < fastestHz ? 1 / std::max(recommendedSamplingHz, slowestHz)
                                                     : 1 / fastestHz};
}

Seconds offenderSamplingInterval(ProcessOffenderSnapshotState state, ThermalLevel level) {
    if (state == ProcessOffenderSnapshotState::collecting) {
        return Seconds{1.5};
    }
    switch (level) {
    case ThermalLevel::normal:
        return Seconds{8};
    case ThermalLevel::fair:
        return Seconds{6};
    case ThermalLevel::serious:
    case ThermalLevel::critical:
        return Seconds{3};
    }
    return Seconds{8};
}

void SamplingDate::scheduleAfter(AwakeTime now, Seconds interval) {
    next_ = now + std::chrono::round<std::chrono::nanoseconds>(interval);
}

} // namespace cindertop
