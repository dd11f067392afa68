#include "thermal/DarwinThermalPressureProvider.h"

#include <utility>

namespace cindertop {

DarwinThermalPressureProvider::DarwinThermalPressureProvider(DarwinThermalPressureReader::Source reader)
    : reader_(std::move(reader)) {}

ThermalPressureLevel DarwinThermalPressureProvider::readPressureLevel() const {
    return reader_().currentLevel().value_or(ThermalPressureLevel::unavailable);
}

} // namespace cindertop
