#pragma once

#include "platform/TemperatureEvents.h"
#include "thermal/TemperatureSensorProviding.h"

namespace cindertop {

/// Reads the temperature sensors of the event system, afresh on every call. As many threads may ask at once
/// as the event system allows.
class ExperimentalSensorTemperatureProvider final : public TemperatureSensorProviding {
public:
    /// `events` must outlive the provider.
    explicit ExperimentalSensorTemperatureProvider(TemperatureEvents& events);

    /// In the system's order, without implausible values and nameless sensors. Sensors of one name each give
    /// a reading, with the same `id`. Where the event system is not supported it is left alone.
    std::vector<TemperatureReading> readTemperatures() override;

private:
    TemperatureEvents& events_;
};

} // namespace cindertop
