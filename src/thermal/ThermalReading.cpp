#include "thermal/ThermalReading.h"

#include <algorithm>
#include <iterator>

namespace cindertop {

namespace {

ThermalDataSource withSensors(ThermalDataSource source) {
    switch (source) {
    case ThermalDataSource::official:
    case ThermalDataSource::mixed:
        return ThermalDataSource::mixed;
    case ThermalDataSource::betaSensors:
    case ThermalDataSource::unavailable:
        break;
    }
    return ThermalDataSource::betaSensors;
}

} // namespace

ThermalReading ThermalReading::merging(std::span<const TemperatureReading> added) const {
    auto merged = *this;
    std::ranges::copy_if(added, std::back_inserter(merged.temperatures), &TemperatureReading::isPlausible);
    if (merged.temperatures.size() > temperatures.size()) {
        merged.dataSource = withSensors(dataSource);
    }
    return merged;
}

} // namespace cindertop
