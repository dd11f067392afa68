#include "platform/ProcessTable.h"
#include "scenario/format/ScenarioParser.h"
#include "scenario/format/ScenarioValues.h"

#include <string>
#include <string_view>

namespace cindertop::simulated {

namespace {

constexpr int microsecondDigits = 6;
constexpr std::uint32_t mostMillicores = 1'000'000'000; ///< a million processors

std::string parseName(const ScenarioNode& node, std::size_t room) {
    const std::string& name = node.text();
    if (name.size() > room) {
        node.fail("is longer than " + std::to_string(room) + " bytes");
    }
    return name;
}

std::string parseLongName(const ScenarioNode& node) {
    return parseName(node, ProcessAccounting{}.longName.size());
}

std::string parseShortName(const ScenarioNode& node) {
    return parseName(node, ProcessAccounting{}.shortName.size());
}

std::optional<Instant> parseStartedAt(const ScenarioNode& node, Instant start) {
    if (node.isNull()) {
        return std::nullopt;
    }
    const auto sinceStart = node.seconds(microsecondDigits);
    if (!isInRange(start, sinceStart)) {
        node.fail("is outside the years 1678 to 2261");
    }
    return start + sinceStart;
}

std::vector<ScenarioGraphics> parseGraphics(const ScenarioNode& node) {
    std::vector<ScenarioGraphics> engines;
    engines.reserve(node.members().size());
    for (const auto& member : node.members()) {
        const ScenarioNode value(member.value, node, member.key);
        engines.push_back({.engine = member.key,
                           .thousandths = value.integer<std::uint32_t>(0, ScenarioLoad::wholeMachine)});
    }
    return engines;
}

ScenarioProcess parseProcess(const ScenarioNode& node, Instant start) {
    const ScenarioObject object(node, {"pid", "parent", "user", "longName", "shortName", "path", "systemFlag",
                                       "millicores", "cpuTimeNanoseconds", "startedAt", "graphics"});
    ScenarioProcess process;
    process.processIdentifier = object.at("pid").integer<std::int32_t>();
    object.readInto(process.parent, "parent",
                    [](const ScenarioNode& value) { return value.integer<std::int32_t>(); });
    object.readInto(process.user, "user",
                    [](const ScenarioNode& value) { return value.integer<std::uint32_t>(); });
    object.readInto(process.longName, "longName", parseLongName);
    object.readInto(process.shortName, "shortName", parseShortName);
    object.readInto(process.path, "path", &ScenarioNode::textOrNull);
    object.readInto(process.isSystemProcess, "systemFlag", &ScenarioNode::boolean);
    object.readInto(process.millicores, "millicores", [](const ScenarioNode& value) {
        return value.integer<std::uint32_t>(0, mostMillicores);
    });
    object.readInto(process.cpuTimeNanoseconds, "cpuTimeNanoseconds",
                    [](const ScenarioNode& value) { return value.integer<std::uint64_t>(); });
    object.readInto(process.startedAt, "startedAt",
                    [start](const ScenarioNode& value) { return parseStartedAt(value, start); });
    object.readInto(process.graphics, "graphics", parseGraphics);
    return process;
}

} // namespace

std::shared_ptr<const ScenarioProcessList> parseProcesses(const ScenarioNode& node, Instant start) {
    if (node.isNull()) {
        return nullptr;
    }
    auto list = std::make_shared<const ScenarioProcessList>(
        node.list([start](const ScenarioNode& process) { return parseProcess(process, start); }));
    if (const auto repetition = list->firstRepetition()) {
        const auto& element = node.elements()[*repetition];
        const ScenarioNode process(element, node, *repetition);
        ScenarioNode(element, process, std::string_view("pid")).fail("is listed already");
    }
    return list;
}

} // namespace cindertop::simulated
