#pragma once

#include "app/MonitoringEngines.h"
#include "app/SamplingSchedule.h"
#include "app/SleepWatch.h"
#include "context/SystemContext.h"
#include "cpu/ProcessOffender.h"
#include "cpu/ProcessOffenderConfiguration.h"
#include "platform/SourceStatus.h"
#include "support/Instant.h"
#include "thermal/ThermalReading.h"
#include "thermal/ThermalScore.h"

#include <optional>
#include <vector>

namespace cindertop {

/// All that is known about a machine after one tick.
struct MachineSnapshot {
    ThermalScore score;
    SystemContextSnapshot context;
    ProcessOffenderSnapshot offenders;            ///< of the latest census, which may be some ticks old
    std::optional<double> cpuPercent;             ///< of the whole machine since the tick before, 0 to 100
    std::vector<TemperatureReading> temperatures; ///< every sensor that answered, in the system's order
    std::vector<SourceStatus> sources;            ///< as of the latest census
    Instant measuredAt;                           ///< of the tick

    bool operator==(const MachineSnapshot&) const = default;
};

/// Measures a machine tick by tick, sensors included. Called from one thread at a time.
class MachineSampler {
public:
    MachineSampler(Machine machine, DarwinThermalPressureReader::Source pressureReader,
                   ProcessOffenderConfiguration offenderConfiguration);

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

    Machine machine_;
    MonitoringEngines engines_;
    ProcessOffenderConfiguration offenderConfiguration_;
    SleepWatch sleepWatch_;
    SamplingDate nextCensus_;
    ProcessOffenderSnapshot offenders_;
    std::vector<SourceStatus> sources_;
};

} // namespace cindertop
