#pragma once

#include "thermal/DarwinThermalPressureReader.h"

namespace cindertop {

/// Answers the thermal pressure. Any thread may ask, as far as the source of its reader allows it.
class DarwinThermalPressureProvider {
public:
    /// The source is first asked, and so the reader made, by the first read.
    explicit DarwinThermalPressureProvider(DarwinThermalPressureReader::Source reader);

    /// `unavailable` when there is no pressure to be had.
    ThermalPressureLevel readPressureLevel() const;

private:
    DarwinThermalPressureReader::Source reader_;
};

} // namespace cindertop
