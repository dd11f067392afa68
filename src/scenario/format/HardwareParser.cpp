#include "scenario/format/ScenarioParser.h"

#include <cstdint>
#include <string_view>

namespace cindertop::simulated {

namespace {

double parseWatts(const ScenarioNode& node) {
    const auto watts = node.number();
    if (watts < 0) {
        node.fail("must not be negative");
    }
    return watts;
}

ChipPowerReading parseChip(const ScenarioNode& node) {
    const ScenarioObject object(node, {"name", "watts"});
    return {.name = object.at("name").text(), .watts = parseWatts(object.at("watts"))};
}

FanReading parseFan(const ScenarioNode& node) {
    const ScenarioObject object(node, {"name", "revolutionsPerMinute"});
    return {.name = object.at("name").text(),
            .revolutionsPerMinute = object.at("revolutionsPerMinute").integer<std::int64_t>(0)};
}

std::optional<ClockLimit> parseClock(const ScenarioNode& node) {
    if (node.isNull()) {
        return std::nullopt;
    }
    const ScenarioObject object(node, {"allowedHertz", "possibleHertz"});
    const auto possible = object.at("possibleHertz").integer<std::int64_t>(1);
    return ClockLimit{.allowedHertz = object.at("allowedHertz").integer<std::int64_t>(0, possible),
                      .possibleHertz = possible};
}

} // namespace

MeterReadings parseMeters(const ScenarioNode& node) {
    const ScenarioObject object(node, {"machineWatts", "chips", "fans"});
    MeterReadings meters;
    object.readInto(meters.machineWatts, "machineWatts", [](const ScenarioNode& watts) {
        return watts.isNull() ? std::nullopt : std::optional(parseWatts(watts));
    });
    object.readInto(meters.chips, "chips", [](const ScenarioNode& list) { return list.list(parseChip); });
    object.readInto(meters.fans, "fans", [](const ScenarioNode& list) { return list.list(parseFan); });
    return meters;
}

ProcessorClockReading parseClocks(const ScenarioNode& node) {
    const ScenarioObject object(node, {"fastest", "mostHeld", "slowedByHeat", "heldByFirmware"});
    ProcessorClockReading reading;
    object.readInto(reading.clock, "fastest", parseClock);
    reading.mostHeld = reading.clock;
    object.readInto(reading.mostHeld, "mostHeld", parseClock);
    object.readInto(reading.isSlowedByHeat, "slowedByHeat", [](const ScenarioNode& value) {
        return value.isNull() ? std::nullopt : std::optional(value.boolean());
    });
    object.readInto(reading.isHeldByFirmware, "heldByFirmware",
                    [](const ScenarioNode& value) { return value.boolean(); });
    return reading;
}

} // namespace cindertop::simulated
