#pragma once

#include "cpu/GraphicsMeter.h"
#include "cpu/ProcessCPUReading.h"
#include "cpu/SystemProcessCPUProvider.h"
#include "platform/Machine.h"
#include "scenario/recorder/LoadRecorder.h"
#include "scenario/recorder/ProcessRecorder.h"
#include "thermal/ThermalProviders.h"
#include "thermal/ThermalScore.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace cindertop {

/// Writes a scenario that plays what a live machine did. Each sample becomes a frame that holds until the
/// next one; the last sample only ends the scenario. No path, user or host name of the machine gets in.
/// Called from one thread.
class ScenarioRecorder {
public:
    /// `machine` must outlive the recorder. `privateWords` are the user's and the host's names, which may be
    /// part of a process's name.
    ScenarioRecorder(Machine machine, std::vector<std::string> privateWords);
    ~ScenarioRecorder();

    ScenarioRecorder(const ScenarioRecorder&) = delete;
    ScenarioRecorder& operator=(const ScenarioRecorder&) = delete;

    /// Reads everything once. The answer is how long to wait before the next sample. Between two samples lies
    /// the time that the machine was awake, whatever the wall clock says; one without any is dropped.
    Seconds sample();

    /// The scenario up to the latest sample; none before the second one.
    std::optional<std::string> scenario() const;

private:
    /// What is known only together with the next sample.
    struct Sample {
        Instant at; ///< as if the wall clock had only been right at the first sample
        AwakeTime awake;
        std::optional<HostCpuLoad> load;
        std::vector<ProcessCPUReading> processes;
        std::map<std::int32_t, std::string> graphics; ///< what each used since the sample before, as JSON
        std::string members;                          ///< the other members of its frame
    };

    void add(Sample sample);
    std::optional<std::uint64_t> readPressure();
    /// The members that differ from those of the frame before, each behind a comma.
    std::string frameMembers(int thermalState, const std::optional<std::uint64_t>& pressure,
                             const std::vector<TemperatureReading>& temperatures);
    std::map<std::int32_t, std::string> readGraphics(Seconds elapsed);
    void writeFrame(const Sample& sample, const Sample& next);
    std::string machineText() const;

    Machine machine_;
    Anonymizer anonymized_;
    std::optional<std::int32_t> pressureToken_; ///< absent: the registration failed
    ExperimentalSensorTemperatureProvider sensors_;
    SystemProcessCPUProvider census_;
    GraphicsMeter graphicsMeter_;
    std::optional<ThermalScore> score_;

    Instant first_; ///< of the first sample
    std::optional<Sample> latest_;
    LoadRecorder loads_;
    std::optional<ProcessRecorder> processLists_;             ///< from the first sample on
    std::map<std::string, std::string, std::less<>> written_; ///< latest value of each key that frames share
    std::string frames_;                                      ///< one a line
};

} // namespace cindertop
