#include "persistence/AppSettingsStore.h"

#include "persistence/Preferences.h"
#include "persistence/StoredValueReaders.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

namespace cindertop {
namespace {

constexpr std::string_view schemaVersionKey = "cindertop.settings.schema-version";

/// No longer used: removed at each save, and at each start.
constexpr std::string_view effectsIntensityKey = "cindertop.effects.intensity";
constexpr std::array<std::string_view, 3> retiredKeys{"cindertop.keyboard.reaction-enabled",
                                                      "cindertop.keyboard.sos-enabled",
                                                      "cindertop.thermal.effect-activation-level"};

UserDefaultsChange storing(std::string_view key, PropertyValue value) {
    return {std::string(key), std::move(value)};
}

UserDefaultsChange removing(std::string_view key) {
    return {std::string(key), std::nullopt};
}

/// Every field under its key, in the order in which they are written.
std::vector<UserDefaultsChange> storingEveryField(const AppSettings& settings) {
    std::vector changes{storing(schemaVersionKey, settings->schemaVersion)};
    changes.reserve(preferences().size() + 2);
    for (const auto& preference : preferences()) {
        changes.push_back(
            std::visit([&preference](const auto& value) { return storing(preference.key, value); },
                       preference.read(*settings)));
    }
    return changes;
}

UserDefaults::Registration registration(const AppSettings& standard) {
    UserDefaults::Registration registration;
    for (const auto& [key, value] : storingEveryField(standard)) {
        registration.emplace(key, *value);
    }
    return registration;
}

AppSettings storedSettings(const UserDefaults& defaults, const AppSettings& standard) {
    AppSettingsFields fields = *standard;
    for (const auto& preference : preferences()) {
        preference.readStored(fields, defaults.value(preference.key));
    }
    return AppSettings(fields);
}

/// Migrates settings of an older version before they are read.
std::vector<UserDefaultsChange> migration(std::int64_t storedVersion) {
    std::vector<UserDefaultsChange> changes;
    if (storedVersion >= appSettingsSchemaVersion) {
        return changes;
    }
    changes.push_back(removing(effectsIntensityKey));
    if (storedVersion < 11) { // notifications were not asked for then
        changes.push_back(storing(preferenceOf(&AppSettingsFields::notificationsEnabled).key, false));
    }
    changes.push_back(storing(preferenceOf(&AppSettingsFields::showProcessOffenders).key, true));
    return changes;
}

} // namespace

bool AppSettingsStore::isNew() const {
    const auto isStored = [this](std::string_view key) { return defaults_.value(key).has_value(); };
    return std::ranges::none_of(storingEveryField(standard_), isStored, &UserDefaultsChange::key) &&
           std::ranges::none_of(retiredKeys, isStored) && !isStored(effectsIntensityKey);
}

void AppSettingsStore::migrate() {
    auto changes = isNew() ? std::vector<UserDefaultsChange>()
                           : migration(storedInteger(defaults_.value(schemaVersionKey)).value_or(0));
    std::ranges::transform(retiredKeys, std::back_inserter(changes), removing);
    defaults_.apply(changes);
}

AppSettings AppSettingsStore::load() {
    migrate();
    defaults_.registerDefaults(registration(standard_));
    const auto settings = storedSettings(defaults_, standard_);
    save(settings);
    return settings;
}

void AppSettingsStore::save(const AppSettings& settings) {
    auto changes = storingEveryField(settings);
    changes.push_back(removing(effectsIntensityKey));
    defaults_.apply(changes);
}

AppSettings AppSettingsStore::reset() {
    save(standard_);
    return standard_;
}

std::vector<MenuBarInfoMode> AppSettingsStore::availableMenuBarInfoModes(bool experimentalSensorsEnabled) {
    std::vector modes{MenuBarInfoMode::none, MenuBarInfoMode::thermalStatus};
    if (experimentalSensorsEnabled) {
        modes.push_back(MenuBarInfoMode::temperature);
    }
    return modes;
}

} // namespace cindertop
