#include "platform/simulated/SimulatedHeatSourceSurvey.h"

#include "platform/simulated/SimulatedTemperatureEvents.h"

namespace cindertop::simulated {

HeatSources SimulatedHeatSourceSurvey::findHeatSources() {
    const auto& frame = timeline_.frame();
    HeatSources found{
        .thermalState = frame.thermalState, .pressureSource = {}, .sensors = {}, .hasFan = false};
    if (frame.pressure) {
        found.pressureSource = "scenario";
    }
    if (!frame.sensors || !SimulatedTemperatureEvents(timeline_).isSupported()) {
        return found;
    }
    for (const auto& sensor : *frame.sensors) {
        if (sensor.celsius) {
            found.sensors.push_back(sensor.product.value_or(""));
        }
    }
    return found;
}

} // namespace cindertop::simulated
