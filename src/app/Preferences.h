#pragma once

#include "app/AppState.h"
#include "persistence/AppSettings.h"

#include <cstdint>
#include <expected>
#include <span>
#include <string>
#include <string_view>
#include <variant>

namespace cindertop {

/// The value of a preference as texts and files carry it; an enumeration by the name of its case.
using PreferenceValue = std::variant<bool, std::int64_t, std::string>;

/// One of the user's preferences, by name.
struct Preference {
    std::string_view name; ///< as in AppSettings
    PreferenceValue (*read)(const AppSettingsFields& fields);
    /// The error says what the value has to be: "has to be true or false".
    std::expected<void, std::string> (*write)(AppSettingsFields& fields, const PreferenceValue& value);
    /// Hands the field to the program, with everything that a change does.
    void (*assign)(AppState& state, const AppSettingsFields& fields);
};

/// All eleven, in the order of AppSettings.
std::span<const Preference> preferences();

/// None when no preference has this name.
const Preference* findPreference(std::string_view name);

/// Whether the settings window would offer `value` now, too, and why it would not. What it does not offer
/// would not outlast a restart.
std::expected<void, std::string> checkIsOffered(const Preference& preference, const PreferenceValue& value,
                                                const AppSettingsFields& current);

/// Changes a preference of the running program, also to its old value.
std::expected<void, std::string> assignPreference(AppState& state, const Preference& preference,
                                                  const PreferenceValue& value);

/// "true", "60", "thermalStatus".
std::string text(const PreferenceValue& value);

/// The value that a person's word means to this preference: "on" is true where a switch is meant.
PreferenceValue preferenceValue(const Preference& preference, std::string_view word);

} // namespace cindertop
