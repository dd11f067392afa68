#include "app/Preferences.h"

#include "persistence/AppSettingsStore.h"
#include "support/Enumeration.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <type_traits>

namespace cindertop {

namespace {

template <typename Enumeration>
std::string caseNames() {
    std::string names;
    for (const auto& row : casesOf<Enumeration>()) {
        names += names.empty() ? "" : ", ";
        names += row.name;
    }
    return names;
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
    return std::unexpected("has to be one of " + caseNames<Enumeration>());
}

template <auto Field, auto Setter>
constexpr Preference preference(std::string_view name) {
    using Value = std::remove_cvref_t<decltype(AppSettingsFields{}.*Field)>;
    return {
        .name = name,
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
        .assign = [](AppState& state, const AppSettingsFields& fields) { (state.*Setter)(fields.*Field); }};
}

using Fields = AppSettingsFields;

constexpr std::array table{
    preference<&Fields::experimentalTemperatureSensorsEnabled,
               &AppState::setExperimentalTemperatureSensorsEnabled>("experimentalTemperatureSensorsEnabled"),
    preference<&Fields::menuBarInfoMode, &AppState::setMenuBarInfoMode>("menuBarInfoMode"),
    preference<&Fields::showDockIcon, &AppState::setShowDockIcon>("showDockIcon"),
    preference<&Fields::diagnosticLogsEnabled, &AppState::setDiagnosticLogsEnabled>("diagnosticLogsEnabled"),
    preference<&Fields::notificationsEnabled, &AppState::setNotificationsEnabled>("notificationsEnabled"),
    preference<&Fields::notificationMinimumLevel, &AppState::setNotificationMinimumLevel>(
        "notificationMinimumLevel"),
    preference<&Fields::recommendationVerbosity, &AppState::setRecommendationVerbosity>(
        "recommendationVerbosity"),
    preference<&Fields::showProcessOffenders, &AppState::setShowProcessOffenders>("showProcessOffenders"),
    preference<&Fields::showContextInsights, &AppState::setShowContextInsights>("showContextInsights"),
    preference<&Fields::historyEnabled, &AppState::setHistoryEnabled>("historyEnabled"),
    preference<&Fields::historyDurationMinutes, &AppState::setHistoryDurationMinutes>(
        "historyDurationMinutes"),
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

std::expected<void, std::string> checkIsOffered(const Preference& preference, const PreferenceValue& value,
                                                const AppSettingsFields& current) {
    if (preference.name != "menuBarInfoMode") {
        return {};
    }
    std::string names;
    for (const auto mode :
         AppSettingsStore::availableMenuBarInfoModes(current.experimentalTemperatureSensorsEnabled)) {
        if (value == encoded(mode)) {
            return {};
        }
        names += (names.empty() ? "" : ", ") + std::string(caseName(mode));
    }
    return std::unexpected("has to be one of " + names);
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
