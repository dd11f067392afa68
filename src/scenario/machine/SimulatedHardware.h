#pragma once

#include "platform/HardwareMeters.h"
#include "platform/ProcessorClocks.h"
#include "scenario/machine/Timeline.h"

#include <utility>

namespace cindertop::simulated {

class SimulatedHardwareMeters final : public HardwareMeters {
public:
    explicit SimulatedHardwareMeters(Timeline timeline) : timeline_(std::move(timeline)) {}

    MeterReadings read() override {
        const auto& meters = timeline_.frame().meters;
        return meters ? *meters : MeterReadings{};
    }

private:
    Timeline timeline_;
};

class SimulatedProcessorClocks final : public ProcessorClocks {
public:
    explicit SimulatedProcessorClocks(Timeline timeline) : timeline_(std::move(timeline)) {}

    ProcessorClockReading read() override {
        return timeline_.frame().clocks.value_or(ProcessorClockReading{});
    }

private:
    Timeline timeline_;
};

} // namespace cindertop::simulated
