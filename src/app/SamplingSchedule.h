#pragma once

#include "cpu/ProcessOffenderSnapshot.h"
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
    /// Also true when the clock was set back by more than the longest interval, lest what is shown freeze
    /// until it catches up.
    bool isDue(Instant now) const;
    /// `interval` is at most 8 s.
    void scheduleAfter(Instant now, Seconds interval);

private:
    Instant next_ = distantPast;
};

} // namespace cindertop
