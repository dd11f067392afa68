#pragma once

#include "persistence/AppSettings.h"
#include "platform/PropertyValue.h"

#include <cstdint>
#include <expected>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace cindertop {

/// One of the user's preferences. A new one is a member of AppSettingsFields, a row of the table, and a row
/// in the settings window; the rest follows from them.
struct Preference {
    using Fields = AppSettingsFields;
    using Member = std::variant<bool Fields::*, std::int64_t Fields::*, MenuBarInfoMode Fields::*,
                                NotificationMinimumLevel Fields::*, RecommendationVerbosity Fields::*,
                                TemperatureUnit Fields::*>;

    /// What only some preferences have.
    struct Extras {
        std::optional<std::string_view> onLinux{}; ///< the default there, if it is not the member's own
        std::optional<NumberBounds> bounds{};
        std::string_view exportedAs{};  ///< its name in exports, if it is another
        bool isForLiveMachines = false; ///< scenarios and exports know no such preference
    };

    Member member;
    std::string_view name;        ///< as in AppSettings
    std::string_view key;         ///< under which it is stored
    std::string_view description; ///< what it does, in one line
    Extras extras{};

    PreferenceValue read(const Fields& fields) const;

    /// The error says what the value has to be: "has to be true or false".
    std::expected<void, std::string> write(Fields& fields, const PreferenceValue& value) const;

    /// Understands what any version of the program, or a person, may have stored; leaves the field as it is
    /// when the value means nothing.
    void readStored(Fields& fields, const std::optional<PropertyValue>& stored) const;

    /// The names of what may be chosen; none where the values are not listed.
    std::vector<std::string_view> choices() const;
};

/// All of them, in the order of AppSettings, in which they are also stored.
std::span<const Preference> preferences();

/// None when no preference has this name.
const Preference* findPreference(std::string_view name);

const Preference& preferenceOf(Preference::Member member);

/// "true or false", "15 to 180", "serious, critical".
std::string allowedValues(const Preference& preference);

/// Whether the settings window would offer `value` now, too, and why it would not. What it does not offer
/// would not outlast a restart.
std::expected<void, std::string> checkIsOffered(const Preference& preference, const PreferenceValue& value,
                                                const AppSettingsFields& current);

/// What else the user should know of a value that was taken: that it was brought into its range, or that
/// another preference changed with it. Empty where there is nothing. `before` are the preferences until then.
std::string remarkOn(const Preference& preference, const PreferenceValue& value,
                     const AppSettingsFields& before);

/// "true", "60", "thermalStatus".
std::string text(const PreferenceValue& value);

/// The value that a person's word means to this preference: "on" is true where a switch is meant.
PreferenceValue preferenceValue(const Preference& preference, std::string_view word);

} // namespace cindertop
