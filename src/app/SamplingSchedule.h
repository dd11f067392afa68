#pragma once

#include "cpu/ProcessOffender.h"
#include "support/Instant.h"
#include "thermal/ThermalLevel.h"

namespace cindertop {

/// How long to sleep after a tick: 0.2 s to 5 s. A rate that is 0, negative or no number neither stalls nor
/// spins.
Seconds tickDelay(double recommendedSamplingHz);

/// How long a census of the processes stays fresh.
Seconds offenderSamplingInterval(ProcessOffenderSnapshotState state, ThermalLevel level);

/// When the next sample of something is due. A new date is due at once.
class SamplingDate {
public:
    bool isDue(AwakeTime now) const { return now >= next_; }

    void scheduleAfter(AwakeTime now, Seconds interval);

private:
    AwakeTime next_ = AwakeTime::min();
};

} // namespace cindertop
