#include "scenario/format/ScenarioParser.h"
#include "scenario/format/ScenarioValues.h"

#include <limits>
#include <utility>

namespace cindertop::simulated {

namespace {

/// The system's thermal state is an `int`, and no other integer is one of the known states.
int parseThermalState(const ScenarioNode& node) {
    const auto state = node.clampedInteger();
    return std::in_range<int>(state) ? static_cast<int>(state) : std::numeric_limits<int>::max();
}

std::optional<std::uint64_t> parsePressure(const ScenarioNode& node) {
    return node.isNull() ? std::nullopt : std::optional(node.integer<std::uint64_t>());
}

ScenarioSensor parseSensor(const ScenarioNode& node) {
    const ScenarioObject object(node, {"product", "celsius"});
    const auto celsius = object.at("celsius");
    return {.product = object.at("product").textOrNull(),
            .celsius = celsius.isNull() ? std::nullopt : std::optional(celsius.number())};
}

ScenarioDisplay parseDisplay(const ScenarioNode& node) {
    const ScenarioObject object(node, {"id", "builtIn"});
    return {.identifier = object.at("id").integer<DisplayIdentifier>(),
            .isBuiltIn = object.at("builtIn").boolean()};
}

/// Null for null.
template <typename Read>
auto parseList(const ScenarioNode& node, const Read& read)
    -> std::shared_ptr<const decltype(node.list(read))> {
    if (node.isNull()) {
        return nullptr;
    }
    return std::make_shared<const decltype(node.list(read))>(node.list(read));
}

ScenarioPowerEntry parsePowerEntry(const ScenarioNode& node) {
    ScenarioPowerEntry entry;
    for (const JsonMember& member : node.members()) {
        const ScenarioNode value(member.value, node, member.key);
        if (std::holds_alternative<bool>(member.value.value)) {
            entry.emplace(member.key, value.boolean());
        } else if (std::holds_alternative<std::string>(member.value.value)) {
            entry.emplace(member.key, value.text());
        } else if (std::holds_alternative<JsonNumber>(member.value.value)) {
            entry.emplace(member.key, value.integer<std::int64_t>());
        } else {
            value.fail("must be true, false, a whole number or text");
        }
    }
    return entry;
}

std::shared_ptr<const ScenarioPower> parsePower(const ScenarioNode& node) {
    const ScenarioObject object(node, {"providing", "lowPowerMode", "entries"});
    const auto entries = object.at("entries");
    return std::make_shared<const ScenarioPower>(ScenarioPower{
        .providing = object.at("providing").textOrNull(),
        .isLowPowerModeEnabled = object.at("lowPowerMode").boolean(),
        .entries = entries.isNull() ? std::nullopt : std::optional(entries.list(parsePowerEntry)),
    });
}

std::optional<ScenarioLoad> parseLoad(const ScenarioNode& node) {
    if (node.isNull()) {
        return std::nullopt;
    }
    const ScenarioObject object(node, {"user", "system", "nice"});
    const auto share = [&](std::string_view key) {
        return object.at(key).integer<std::uint32_t>(0, ScenarioLoad::wholeMachine);
    };
    const ScenarioLoad load{.user = share("user"), .system = share("system"), .nice = share("nice")};
    if (load.user + load.system + load.nice > ScenarioLoad::wholeMachine) {
        node.fail("is more than 1000 thousandths");
    }
    return load;
}

ScenarioFrame initialFrame() {
    return {.sensors = std::make_shared<const std::vector<ScenarioSensor>>(),
            .displays = std::make_shared<const std::vector<ScenarioDisplay>>(
                1, ScenarioDisplay{.identifier = 1, .isBuiltIn = true}),
            .power = std::make_shared<const ScenarioPower>(),
            .processes = std::make_shared<const ScenarioProcessList>()};
}

/// `frame` is the one before, or the initial one.
ScenarioFrame parseFrame(const ScenarioNode& node, ScenarioFrame frame, Instant start) {
    const ScenarioObject object(node, {"at", "thermalState", "pressure", "sensors", "displays", "power",
                                       "load", "processes", "meters", "clocks"});
    const auto at = object.at("at");
    frame.at = at.secondsFromZero();
    if (!isInRange(start, frame.at)) {
        at.fail("is beyond the year 2261");
    }
    object.readInto(frame.thermalState, "thermalState", parseThermalState);
    object.readInto(frame.pressure, "pressure", parsePressure);
    object.readInto(frame.sensors, "sensors",
                    [](const ScenarioNode& list) { return parseList(list, parseSensor); });
    object.readInto(frame.displays, "displays",
                    [](const ScenarioNode& list) { return parseList(list, parseDisplay); });
    object.readInto(frame.power, "power", parsePower);
    object.readInto(frame.load, "load", parseLoad);
    object.readInto(frame.processes, "processes",
                    [start](const ScenarioNode& list) { return parseProcesses(list, start); });
    object.readInto(frame.meters, "meters", [](const ScenarioNode& meters) {
        return std::make_shared<const MeterReadings>(parseMeters(meters));
    });
    object.readInto(frame.clocks, "clocks", parseClocks);
    return frame;
}

} // namespace

std::vector<ScenarioFrame> parseFrames(const ScenarioNode& frames, Instant start) {
    if (frames.elements().empty()) {
        frames.fail("must have a frame at 0");
    }
    std::vector<ScenarioFrame> parsed;
    parsed.reserve(frames.elements().size());
    for (std::size_t index = 0; index < frames.elements().size(); ++index) {
        const ScenarioNode node(frames.elements()[index], frames, index);
        auto frame = parseFrame(node, parsed.empty() ? initialFrame() : parsed.back(), start);
        if (parsed.empty() && frame.at != std::chrono::nanoseconds::zero()) {
            node.fail("must be at 0, as the first one");
        }
        if (!parsed.empty() && frame.at <= parsed.back().at) {
            node.fail("must be later than the frame before");
        }
        parsed.push_back(std::move(frame));
    }
    return parsed;
}

} // namespace cindertop::simulated
