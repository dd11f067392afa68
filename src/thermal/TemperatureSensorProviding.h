#pragma once

#include "thermal/TemperatureReading.h"

#include <vector>

namespace cindertop {

/// Reads the temperature sensors. Any thread may ask.
class TemperatureSensorProviding {
public:
    virtual ~TemperatureSensorProviding() = default;
    /// Never fails: when nothing can be read, the list is empty.
    virtual std::vector<TemperatureReading> readTemperatures() = 0;
};

} // namespace cindertop
