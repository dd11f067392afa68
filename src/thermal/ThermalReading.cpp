#include "thermal/ThermalReading.h"

#include "support/Text.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace cindertop {

namespace {

/// Part of a lower-case name, and what it tells.
using NameRule = std::pair<std::string_view, ThermalSensorKind>;

/// The first row that occurs in a name decides, so the order settles names that several rows match.
constexpr std::array nameRules{
    NameRule{"battery", ThermalSensorKind::battery}, NameRule{"gas gauge", ThermalSensorKind::battery},
    NameRule{"ssd", ThermalSensorKind::storage},     NameRule{"nand", ThermalSensorKind::storage},
    NameRule{"gpu", ThermalSensorKind::gpu},         NameRule{"cpu", ThermalSensorKind::cpu},
    NameRule{"core", ThermalSensorKind::cpu},        NameRule{"acc", ThermalSensorKind::cpu},
    NameRule{"die", ThermalSensorKind::cpu},         NameRule{"soc", ThermalSensorKind::cpu},
    NameRule{"power", ThermalSensorKind::power},     NameRule{"charger", ThermalSensorKind::power},
    NameRule{"pmu", ThermalSensorKind::power},
};

} // namespace

ThermalSensorKind inferred(std::string_view name) {
    const auto lowerName = lowerCased(name);
    for (const auto& [part, kind] : nameRules) {
        if (lowerName.contains(part)) {
            return kind;
        }
    }
    return ThermalSensorKind::other;
}

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
