#include "scenario/format/ScenarioParser.h"

#include "scenario/format/JsonTree.h"
#include "scenario/format/ScenarioNode.h"
#include "scenario/format/ScenarioValues.h"

#include <algorithm>
#include <array>
#include <utility>

namespace cindertop::simulated {

namespace {

constexpr int schemaVersion = 1;

template <typename Value>
using NamedValue = std::pair<std::string_view, Value>;

using Authorization = NotificationAuthorizationStatus;

constexpr std::array authorizations{
    NamedValue<Authorization>{"notDetermined", Authorization::notDetermined},
    NamedValue<Authorization>{"denied", Authorization::denied},
    NamedValue<Authorization>{"authorized", Authorization::authorized},
    NamedValue<Authorization>{"provisional", Authorization::provisional},
    NamedValue<Authorization>{"ephemeral", Authorization::ephemeral},
    NamedValue<Authorization>{"unknown", Authorization::unknown},
};
constexpr std::array answers{
    NamedValue<NotificationAnswer>{"granted", NotificationAnswer::granted},
    NamedValue<NotificationAnswer>{"refused", NotificationAnswer::refused},
    NamedValue<NotificationAnswer>{"error", NotificationAnswer::error},
};
constexpr std::array deliveries{
    NamedValue<NotificationDelivery>{"accepted", NotificationDelivery::accepted},
    NamedValue<NotificationDelivery>{"error", NotificationDelivery::error},
};

template <typename Value, std::size_t Count>
Value parseName(const ScenarioNode& node, const std::array<NamedValue<Value>, Count>& names) {
    const auto* const named = std::ranges::find(names, node.text(), &NamedValue<Value>::first);
    if (named != names.end()) {
        return named->second;
    }
    std::string choice;
    for (const auto& [name, value] : names) {
        choice += (choice.empty() ? "" : ", ") + std::string(name);
    }
    node.fail("must be one of " + choice);
}

OperatingSystem parseSystem(const ScenarioNode& node) {
    const auto system = fromRawValue<OperatingSystem>(node.text());
    if (!system) {
        node.fail("must be one of mac, linux");
    }
    return *system;
}

Instant parseStartOf(const ScenarioNode& node) {
    const auto start = parseStart(node.text());
    if (!start) {
        node.fail("must be a moment of the years 1678 to 2261, such as 2025-03-05T18:30:00Z");
    }
    return *start;
}

std::string parseTimeZone(const ScenarioNode& node) {
    if (!isTimeZoneName(node.text())) {
        node.fail("is not a known time zone");
    }
    return node.text();
}

std::string parseLocale(const ScenarioNode& node) {
    if (!isLocaleName(node.text())) {
        node.fail("is not a name of a locale such as en_GB");
    }
    return node.text();
}

std::chrono::nanoseconds parseDuration(const ScenarioNode& node, Instant start) {
    const auto duration = node.secondsFromZero();
    if (!isInRange(start, duration)) {
        node.fail("ends beyond the year 2261");
    }
    return duration;
}

ScenarioMachine parseMachine(const ScenarioNode& node) {
    const ScenarioObject object(node, {"modelIdentifier", "cpuBrand", "architecture", "processorCount"});
    ScenarioMachine machine;
    object.readInto(machine.modelIdentifier, "modelIdentifier", &ScenarioNode::text);
    object.readInto(machine.cpuBrand, "cpuBrand", &ScenarioNode::textOrNull);
    object.readInto(machine.architecture, "architecture", &ScenarioNode::text);
    object.readInto(machine.processorCount, "processorCount",
                    [](const ScenarioNode& count) { return count.integer<int>(1); });
    return machine;
}

std::vector<ScenarioSetting> parseSettings(const ScenarioNode& node) {
    std::vector<ScenarioSetting> settings;
    for (const JsonMember& member : node.members()) {
        const ScenarioNode value(member.value, node, member.key);
        settings.push_back({.name = member.key, .value = value.preferenceValue(), .path = value.path()});
    }
    return settings;
}

ScenarioNotifications parseNotifications(const ScenarioNode& node) {
    const ScenarioObject object(node, {"authorization", "answer", "delivery"});
    ScenarioNotifications notifications;
    object.readInto(notifications.authorization, "authorization",
                    [](const ScenarioNode& name) { return parseName(name, authorizations); });
    object.readInto(notifications.answer, "answer",
                    [](const ScenarioNode& name) { return parseName(name, answers); });
    object.readInto(notifications.delivery, "delivery",
                    [](const ScenarioNode& name) { return parseName(name, deliveries); });
    return notifications;
}

ScenarioBundle parseBundle(const ScenarioNode& node) {
    const ScenarioObject object(node, {"CFBundleIdentifier", "CFBundleDisplayName", "CFBundleName"});
    ScenarioBundle bundle;
    object.readInto(bundle.identifier, "CFBundleIdentifier", &ScenarioNode::text);
    object.readInto(bundle.displayName, "CFBundleDisplayName", &ScenarioNode::text);
    object.readInto(bundle.name, "CFBundleName", &ScenarioNode::text);
    return bundle;
}

std::map<std::string, ScenarioBundle, std::less<>> parseBundles(const ScenarioNode& node) {
    std::map<std::string, ScenarioBundle, std::less<>> bundles;
    for (const JsonMember& member : node.members()) {
        bundles.emplace(member.key, parseBundle(ScenarioNode(member.value, node, member.key)));
    }
    return bundles;
}

Scenario parseRoot(const ScenarioNode& node) {
    const ScenarioObject object(node, {"schemaVersion", "name", "description", "start", "system", "timeZone",
                                       "locale", "duration", "machine", "ownProcessIdentifier",
                                       "ownBundleIdentifier", "termsAccepted", "settings", "notifications",
                                       "bundles", "frames", "commands"});
    if (object.at("schemaVersion").clampedInteger() != schemaVersion) {
        object.at("schemaVersion").fail("must be 1");
    }
    Scenario scenario;
    object.readInto(scenario.name, "name", &ScenarioNode::text);
    object.readInto(scenario.description, "description", &ScenarioNode::text);
    scenario.start = parseStartOf(object.at("start"));
    object.readInto(scenario.operatingSystem, "system", parseSystem);
    object.readInto(scenario.timeZone, "timeZone", parseTimeZone);
    object.readInto(scenario.locale, "locale", parseLocale);
    scenario.duration = parseDuration(object.at("duration"), scenario.start);
    object.readInto(scenario.machine, "machine", parseMachine);
    object.readInto(scenario.ownProcessIdentifier, "ownProcessIdentifier",
                    [](const ScenarioNode& pid) { return pid.integer<std::int32_t>(); });
    object.readInto(scenario.ownBundleIdentifier, "ownBundleIdentifier", &ScenarioNode::textOrNull);
    object.readInto(scenario.termsAccepted, "termsAccepted", &ScenarioNode::boolean);
    object.readInto(scenario.settings, "settings", parseSettings);
    object.readInto(scenario.notifications, "notifications", parseNotifications);
    object.readInto(scenario.bundles, "bundles", parseBundles);
    scenario.frames = parseFrames(object.at("frames"), scenario.start);
    object.readInto(scenario.commands, "commands",
                    [&](const ScenarioNode& commands) { return parseCommands(commands, scenario.start); });
    return scenario;
}

} // namespace

std::expected<Scenario, ScenarioError> parseScenario(std::string_view text) {
    const auto json = parseJson(text);
    if (!json) {
        return std::unexpected(json.error());
    }
    try {
        return parseRoot(ScenarioNode(*json));
    } catch (const ScenarioError& error) {
        return std::unexpected(error);
    }
}

} // namespace cindertop::simulated
