#include "persistence/Preferences.h"

#include "persistence/AppSettingsStore.h"
#include "persistence/StoredValueReaders.h"
#include "support/Enumeration.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <iterator>
#include <type_traits>
#include <vector>

namespace cindertop {

namespace {

std::string listed(const std::vector<std::string_view>& words) {
    std::string list;
    for (const auto word : words) {
        list += list.empty() ? "" : ", ";
        list += word;
    }
    return list;
}

template <typename Enumeration>
std::vector<std::string_view> caseNames() {
    std::vector<std::string_view> names;
    for (const auto& row : casesOf<Enumeration>()) {
        names.push_back(row.name);
    }
    return names;
}

template <typename Value>
std::optional<Value> decoded(const PreferenceValue& value) {
    if constexpr (std::is_enum_v<Value>) {
        const auto* const name = std::get_if<std::string>(&value);
        return name != nullptr ? fromRawValue<Value>(*name) : std::nullopt;
    } else {
        const auto* const held = std::get_if<Value>(&value);
        return held != nullptr ? std::optional(*held) : std::nullopt;
    }
}

/// What a value has to be.
template <typename Value>
std::string needs() {
    if constexpr (std::is_enum_v<Value>) {
        return "one of " + listed(caseNames<Value>());
    } else {
        return std::is_same_v<Value, bool> ? "true or false" : "a whole number";
    }
}

template <typename Value>
std::optional<Value> decodedStored(const std::optional<PropertyValue>& stored) {
    if constexpr (std::is_enum_v<Value>) {
        return storedCase<Value>(stored);
    } else if constexpr (std::is_same_v<Value, bool>) {
        return storedBoolean(stored);
    } else {
        return storedInteger(stored);
    }
}

using Fields = AppSettingsFields;

constexpr auto table = std::to_array<Preference>({
    {&Fields::experimentalTemperatureSensorsEnabled,
     "experimentalTemperatureSensorsEnabled",
     "cindertop.thermal.experimental-sensors",
     "Read the temperature sensors of processor and graphics.",
     {.onLinux = "true", .exportedAs = "experimentalSensorsEnabled"}},
    {&Fields::menuBarInfoMode,
     "menuBarInfoMode",
     "cindertop.menu-bar.info-mode",
     "The text beside the icon in the panel.",
     {.onLinux = "temperature"}},
    {&Fields::showDockIcon, "showDockIcon", "cindertop.app.show-dock-icon",
     "Keep an entry in the task bar while no window is open."},
    {&Fields::diagnosticLogsEnabled, "diagnosticLogsEnabled", "cindertop.diagnostics.enabled",
     "Keep a log of the program's own doings, for exports."},
    {&Fields::notificationsEnabled,
     "notificationsEnabled",
     "cindertop.notifications.enabled",
     "Notify when it gets hot, and when that is over.",
     {.onLinux = "true"}},
    {&Fields::notificationMinimumLevel, "notificationMinimumLevel", "cindertop.notifications.minimum-level",
     "The lowest level that brings a notification."},
    {&Fields::recommendationVerbosity, "recommendationVerbosity",
     "cindertop.assistant.recommendation-verbosity", "Show the main advice alone, or up to two more."},
    {&Fields::showProcessOffenders, "showProcessOffenders", "cindertop.assistant.show-process-offenders",
     "Rank the applications that use the processor; always on."},
    {&Fields::showContextInsights, "showContextInsights", "cindertop.assistant.show-context-insights",
     "Give advice on displays, a closed lid and charging, too."},
    {&Fields::historyEnabled, "historyEnabled", "cindertop.history.enabled",
     "Record the last hour and the day; off deletes what is recorded."},
    {&Fields::historyDurationMinutes,
     "historyDurationMinutes",
     "cindertop.history.duration-minutes",
     "How many minutes of the recorded hour are shown.",
     {.bounds = historyMinutesBounds}},
    {&Fields::temperatureUnit,
     "temperatureUnit",
     "cindertop.thermal.temperature-unit",
     "The unit of temperatures: the region's, or always one.",
     {.isForLiveMachines = true}},
});

bool isAnyOf(std::string_view word, std::initializer_list<std::string_view> words) {
    return std::ranges::find(words, word) != words.end();
}

} // namespace

PreferenceValue Preference::read(const Fields& fields) const {
    return std::visit(
        [&fields](auto field) -> PreferenceValue {
            if constexpr (std::is_enum_v<std::remove_cvref_t<decltype(fields.*field)>>) {
                return std::string(rawValue(fields.*field));
            } else {
                return fields.*field;
            }
        },
        member);
}

std::expected<void, std::string> Preference::write(Fields& fields, const PreferenceValue& value) const {
    return std::visit(
        [&](auto field) -> std::expected<void, std::string> {
            using Value = std::remove_cvref_t<decltype(fields.*field)>;
            const auto result = decoded<Value>(value);
            if (!result) {
                return std::unexpected("has to be " + needs<Value>());
            }
            fields.*field = *result;
            return {};
        },
        member);
}

void Preference::readStored(Fields& fields, const std::optional<PropertyValue>& stored) const {
    std::visit(
        [&](auto field) {
            using Value = std::remove_cvref_t<decltype(fields.*field)>;
            fields.*field = decodedStored<Value>(stored).value_or(fields.*field);
        },
        member);
}

std::vector<std::string_view> Preference::choices() const {
    return std::visit(
        []<typename Value>(Value Fields::* /*field*/) -> std::vector<std::string_view> {
            if constexpr (std::is_same_v<Value, MenuBarInfoMode>) { // without the retired ones
                std::vector<std::string_view> names;
                std::ranges::transform(AppSettingsStore::availableMenuBarInfoModes(true),
                                       std::back_inserter(names), caseName<MenuBarInfoMode>);
                return names;
            } else if constexpr (std::is_enum_v<Value>) {
                return caseNames<Value>();
            } else {
                return {};
            }
        },
        member);
}

std::span<const Preference> preferences() {
    return table;
}

const Preference* findPreference(std::string_view name) {
    const auto* const found = std::ranges::find(table, name, &Preference::name);
    return found == table.end() ? nullptr : found;
}

const Preference& preferenceOf(Preference::Member member) {
    return *std::ranges::find(table, member, &Preference::member); // the table lists every member
}

std::string allowedValues(const Preference& preference) {
    if (const auto& bounds = preference.extras.bounds) {
        return std::to_string(bounds->least) + " to " + std::to_string(bounds->most);
    }
    if (preference.member == Preference::Member(&Fields::showProcessOffenders)) {
        return "true";
    }
    const auto choices = preference.choices();
    return choices.empty() ? "true or false" : listed(choices);
}

std::expected<void, std::string> checkIsOffered(const Preference& preference, const PreferenceValue& value,
                                                const AppSettingsFields& current) {
    if (preference.member == Preference::Member(&Fields::showProcessOffenders) &&
        value == PreferenceValue(false)) {
        return std::unexpected("stays true: advice and alerts are made from what it finds");
    }
    if (preference.member != Preference::Member(&Fields::menuBarInfoMode)) {
        return {};
    }
    if (value == PreferenceValue("temperature") && !current.experimentalTemperatureSensorsEnabled) {
        return std::unexpected(
            "temperature needs sensors: set experimentalTemperatureSensorsEnabled to true first");
    }
    const auto choices = preference.choices();
    const bool isOffered = std::ranges::any_of(
        choices, [&](std::string_view choice) { return value == PreferenceValue(std::string(choice)); });
    return isOffered ? std::expected<void, std::string>()
                     : std::unexpected("has to be one of " + listed(choices));
}

std::string remarkOn(const Preference& preference, const PreferenceValue& value,
                     const AppSettingsFields& before) {
    const auto* const number = std::get_if<std::int64_t>(&value);
    if (preference.extras.bounds && number != nullptr) {
        const auto& bounds = *preference.extras.bounds;
        const auto end = *number > bounds.most ? bounds.most : bounds.least;
        if (*number != std::clamp(*number, bounds.least, bounds.most)) {
            return std::string(preference.name) + " is " + std::to_string(end) +
                   " now: " + std::to_string(end) + (end == bounds.most ? " is the most" : " is the least");
        }
    }
    if (preference.member == Preference::Member(&Fields::experimentalTemperatureSensorsEnabled) &&
        value == PreferenceValue(false) && before.menuBarInfoMode == MenuBarInfoMode::temperature) {
        return "menuBarInfoMode is none now: temperature needs sensors";
    }
    return {};
}

std::string text(const PreferenceValue& value) {
    if (const auto* const flag = std::get_if<bool>(&value)) {
        return *flag ? "true" : "false";
    }
    if (const auto* const number = std::get_if<std::int64_t>(&value)) {
        return std::to_string(*number);
    }
    return std::get<std::string>(value);
}

PreferenceValue preferenceValue(const Preference& preference, std::string_view word) {
    const auto standard = preference.read(AppSettingsFields{});
    if (std::holds_alternative<bool>(standard)) {
        if (isAnyOf(word, {"true", "on", "yes", "1"})) {
            return true;
        }
        if (isAnyOf(word, {"false", "off", "no", "0"})) {
            return false;
        }
    }
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
    if (std::holds_alternative<std::int64_t>(standard) && error == std::errc() &&
        end == word.data() + word.size()) {
        return number;
    }
    return std::string(word);
}

} // namespace cindertop
