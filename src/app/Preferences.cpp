#include "app/Preferences.h"

#include "persistence/AppSettingsStore.h"
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

/// The names of what may be chosen; none where the values are not listed.
template <typename Value>
std::vector<std::string_view> choicesOf() {
    if constexpr (std::is_same_v<Value, MenuBarInfoMode>) { // without the retired ones
        std::vector<std::string_view> names;
        std::ranges::transform(AppSettingsStore::availableMenuBarInfoModes(true), std::back_inserter(names),
                               caseName<MenuBarInfoMode>);
        return names;
    } else if constexpr (std::is_enum_v<Value>) {
        return caseNames<Value>();
    } else {
        return {};
    }
}

template <typename Value>
PreferenceValue encoded(const Value& value) {
    if constexpr (std::is_enum_v<Value>) {
        return std::string(caseName(value));
    } else {
        return value;
    }
}

std::expected<bool, std::string> decoded(const PreferenceValue& value, std::type_identity<bool> /*type*/) {
    const auto* const flag = std::get_if<bool>(&value);
    return flag != nullptr ? std::expected<bool, std::string>(*flag)
                           : std::unexpected("has to be true or false");
}

std::expected<std::int64_t, std::string> decoded(const PreferenceValue& value,
                                                 std::type_identity<std::int64_t> /*type*/) {
    const auto* const number = std::get_if<std::int64_t>(&value);
    return number != nullptr ? std::expected<std::int64_t, std::string>(*number)
                             : std::unexpected("has to be a whole number");
}

template <typename Enumeration>
std::expected<Enumeration, std::string> decoded(const PreferenceValue& value,
                                                std::type_identity<Enumeration> /*type*/) {
    if (const auto* const word = std::get_if<std::string>(&value)) {
        for (const auto& row : casesOf<Enumeration>()) {
            if (row.name == *word) {
                return row.value;
            }
        }
    }
    return std::unexpected("has to be one of " + listed(caseNames<Enumeration>()));
}

/// The columns that are the same for each type of field.
template <auto Field, auto Setter>
constexpr Preference preference(std::string_view name, std::string_view description,
                                std::optional<NumberBounds> bounds = std::nullopt,
                                bool isForLiveMachines = false) {
    using Value = std::remove_cvref_t<decltype(AppSettingsFields{}.*Field)>;
    return {
        .name = name,
        .description = description,
        .bounds = bounds,
        .isForLiveMachines = isForLiveMachines,
        .read = [](const AppSettingsFields& fields) { return encoded(fields.*Field); },
        .write = [](AppSettingsFields& fields,
                    const PreferenceValue& value) -> std::expected<void, std::string> {
            auto result = decoded(value, std::type_identity<Value>{});
            if (!result) {
                return std::unexpected(result.error());
            }
            fields.*Field = *result;
            return {};
        },
        .choices = [] { return choicesOf<Value>(); },
        .assign = [](AppState& state, const AppSettingsFields& fields) { (state.*Setter)(fields.*Field); }};
}

using Fields = AppSettingsFields;

constexpr std::string_view sensors = "experimentalTemperatureSensorsEnabled";
constexpr std::string_view infoMode = "menuBarInfoMode";
constexpr std::string_view offenders = "showProcessOffenders";

constexpr std::array table{
    preference<&Fields::experimentalTemperatureSensorsEnabled,
               &AppState::setExperimentalTemperatureSensorsEnabled>(
        sensors, "Read the temperature sensors of processor and graphics."),
    preference<&Fields::menuBarInfoMode, &AppState::setMenuBarInfoMode>(
        infoMode, "The text beside the icon in the panel."),
    preference<&Fields::showDockIcon, &AppState::setShowDockIcon>("showDockIcon",
                                                                  "Show the program in the task bar, too."),
    preference<&Fields::diagnosticLogsEnabled, &AppState::setDiagnosticLogsEnabled>(
        "diagnosticLogsEnabled", "Keep a log of the program's own doings, for exports."),
    preference<&Fields::notificationsEnabled, &AppState::setNotificationsEnabled>(
        "notificationsEnabled", "Notify when it gets hot, and when that is over."),
    preference<&Fields::notificationMinimumLevel, &AppState::setNotificationMinimumLevel>(
        "notificationMinimumLevel", "The lowest level that brings a notification."),
    preference<&Fields::recommendationVerbosity, &AppState::setRecommendationVerbosity>(
        "recommendationVerbosity", "Show the main advice alone, or up to two more."),
    preference<&Fields::showProcessOffenders, &AppState::setShowProcessOffenders>(
        offenders, "Rank the applications that use the processor; always on."),
    preference<&Fields::showContextInsights, &AppState::setShowContextInsights>(
        "showContextInsights", "Give advice on displays, a closed lid and charging, too."),
    preference<&Fields::historyEnabled, &AppState::setHistoryEnabled>(
        "historyEnabled", "Record the last hour and the day; off deletes what is recorded."),
    preference<&Fields::historyDurationMinutes, &AppState::setHistoryDurationMinutes>(
        "historyDurationMinutes", "How many minutes of the recorded hour are shown.", historyMinutesBounds),
    preference<&Fields::temperatureUnit, &AppState::setTemperatureUnit>(
        "temperatureUnit", "The unit of temperatures: the region's, or always one.", std::nullopt, true),
};

bool isAnyOf(std::string_view word, std::initializer_list<std::string_view> words) {
    return std::ranges::find(words, word) != words.end();
}

} // namespace

std::span<const Preference> preferences() {
    return table;
}

const Preference* findPreference(std::string_view name) {
    const auto* const found = std::ranges::find(table, name, &Preference::name);
    return found == table.end() ? nullptr : found;
}

std::string allowedValues(const Preference& preference) {
    if (const auto& bounds = preference.bounds) {
        return std::to_string(bounds->least) + " to " + std::to_string(bounds->most);
    }
    if (preference.name == offenders) {
        return "true";
    }
    const auto choices = preference.choices();
    return choices.empty() ? "true or false" : listed(choices);
}

std::expected<void, std::string> checkIsOffered(const Preference& preference, const PreferenceValue& value,
                                                const AppSettingsFields& current) {
    if (preference.name == offenders && value == PreferenceValue(false)) {
        return std::unexpected("stays true: advice and alerts are made from what it finds");
    }
    if (preference.name != infoMode) {
        return {};
    }
    if (value == encoded(MenuBarInfoMode::temperature) && !current.experimentalTemperatureSensorsEnabled) {
        return std::unexpected("temperature needs sensors: set " + std::string(sensors) + " to true first");
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
    if (preference.bounds && number != nullptr) {
        const auto [least, most, standard] = *preference.bounds;
        const auto end = *number > most ? most : least;
        if (*number != std::clamp(*number, least, most)) {
            return std::string(preference.name) + " is " + std::to_string(end) +
                   " now: " + std::to_string(end) + (end == most ? " is the most" : " is the least");
        }
    }
    if (preference.name == sensors && value == PreferenceValue(false) &&
        before.menuBarInfoMode == MenuBarInfoMode::temperature) {
        return std::string(infoMode) + " is none now: temperature needs sensors";
    }
    return {};
}

std::expected<void, std::string> assignPreference(AppState& state, const Preference& preference,
                                                  const PreferenceValue& value) {
    AppSettingsFields fields;
    auto result = preference.write(fields, value);
    if (result) {
        preference.assign(state, fields);
    }
    return result;
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
