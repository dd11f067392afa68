#pragma once

#include "app/MachineServices.h"
#include "app/MachineSnapshot.h"
#include "app/MonitoringEngines.h"
#include "app/SamplingSchedule.h"
#include "app/SleepWatch.h"
#include "cpu/ProcessOffenderConfiguration.h"

#include <vector>

namespace cindertop {

/// Measures a machine tick by tick, sensors included. Called from one thread at a time.
class MachineSampler {
public:
    MachineSampler(const MachineServices& services, ProcessOffenderConfiguration offenderConfiguration);

    MachineSampler(const MachineSampler&) = delete;
    MachineSampler& operator=(const MachineSampler&) = delete;

    /// Starts the intervals of everything that is measured over time, so that a `sampleNow` shortly after has
    /// shares to tell. Reads no sensors: some of them answer only now and then.
    void prime();

    /// One tick. The processes are counted when their schedule says so; until then the last census stands.
    MachineSnapshot sample();

    /// One tick with a census, whatever the schedule says.
    MachineSnapshot sampleNow();

private:
    ThermalScore readScore();
    AwakeTime awakeTime();
    void takeCensus(Instant now, AwakeTime awake);

    MachineServices services_;
    MonitoringEngines engines_;
    ProcessOffenderConfiguration offenderConfiguration_;
    SleepWatch sleepWatch_;
    SamplingDate nextCensus_;
    ProcessOffenderSnapshot offenders_;
    std::vector<SourceStatus> sources_;
};

} // namespace cindertop
