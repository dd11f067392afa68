#include "scenario/recorder/HardwareRecorder.h"

#include "report/Json.h"
#include "scenario/recorder/ScenarioText.h"

#include <nlohmann/json.hpp>

namespace cindertop {

namespace {

std::string clockText(const std::optional<ClockLimit>& clock) {
    if (!clock) {
        return "null";
    }
    JsonObjectText object;
    object.add("allowedHertz", std::to_string(clock->allowedHertz));
    object.add("possibleHertz", std::to_string(clock->possibleHertz));
    return object.text();
}

std::string flagText(bool flag) {
    return flag ? "true" : "false";
}

} // namespace

std::string metersText(const MeterReadings& meters, const Anonymizer& anonymized) {
    JsonListText chips;
    for (const auto& chip : meters.chips) {
        JsonObjectText object;
        object.add("name", jsonString(anonymized(chip.name)));
        object.add("watts", compactText(Json(chip.watts)));
        chips.add(object.text());
    }
    JsonListText fans;
    for (const auto& fan : meters.fans) {
        JsonObjectText object;
        object.add("name", jsonString(anonymized(fan.name)));
        object.add("revolutionsPerMinute", std::to_string(fan.revolutionsPerMinute));
        fans.add(object.text());
    }
    JsonObjectText text;
    text.add("machineWatts", meters.machineWatts ? compactText(Json(*meters.machineWatts)) : "null");
    text.add("chips", chips.text());
    text.add("fans", fans.text());
    return text.text();
}

std::string clocksText(const ProcessorClockReading& reading) {
    JsonObjectText text;
    text.add("fastest", clockText(reading.clock));
    text.add("mostHeld", clockText(reading.mostHeld));
    text.add("slowedByHeat", reading.isSlowedByHeat ? flagText(*reading.isSlowedByHeat) : "null");
    text.add("heldByFirmware", flagText(reading.isHeldByFirmware));
    return text.text();
}

} // namespace cindertop
