#pragma once

#include "app/AppState.h"
#include "persistence/AppSettings.h"

#include <cstdint>
#include <expected>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace cindertop {

/// The value of a preference as texts and files carry it; an enumeration by the name of its case.
using PreferenceValue = std::variant<bool, std::int64_t, std::string>;

/// One of the user's preferences, by name.
struct Preference {
    std::string_view name;        ///< as in AppSettings
    std::string_view description; ///< what it does, in one line
    std::optional<NumberBounds> bounds;
    bool isForLiveMachines; ///< a scenario knows no such preference
    PreferenceValue (*read)(const AppSettingsFields& fields);
    /// The error says what the value has to be: "has to be true or false".
    std::expected<void, std::string> (*write)(AppSettingsFields& fields, const PreferenceValue& value);
    /// The names of what may be chosen; none where the values are not listed.
    std::vector<std::string_view> (*choices)();
    /// Hands the field to the program, with everything that a change does.
    void (*assign)(AppState& state, const AppSettingsFields& fields);
};

/// All of them, in the order of AppSettings.
std::span<const Preference> preferences();

/// None when no preference has this name.
const Preference* findPreference(std::string_view name);

/// "true or false", "15 to 180", "serious, critical".
std::string allowedValues(const Preference& preference);

/// Whether the settings window would offer `value` now, too, and why it would not. What it does not offer
/// would not outlast a restart.
std::expected<void, std::string> checkIsOffered(const Preference& preference, const PreferenceValue& value,
                                                const AppSettingsFields& current);

/// Changes a preference of the running program, also to its old value.
std::expected<void, std::string> assignPreference(AppState& state, const Preference& preference,
                                                  const PreferenceValue& value);

/// What else the user should know of a value that was taken: that it was brought into its range, or that
/// another preference changed with it. Empty where there is nothing. `before` are the preferences until then.
std::string remarkOn(const Preference& preference, const PreferenceValue& value,
                     const AppSettingsFields& before);

/// "true", "60", "thermalStatus".
std::string text(const PreferenceValue& value);

/// The value that a person's word means to this preference: "on" is true where a switch is meant.
PreferenceValue preferenceValue(const Preference& preference, std::string_view word);

} // namespace cindertop
