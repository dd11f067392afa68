#include "persistence/AppSettingsStore.h"

#include "persistence/StoredValueReaders.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>

namespace cindertop {
namespace {

namespace keys {

constexpr std::string_view schemaVersion = "cindertop.settings.schema-version";
constexpr std::string_view experimentalSensors = "cindertop.thermal.experimental-sensors";
constexpr std::string_view menuBarInfoMode = "cindertop.menu-bar.info-mode";
constexpr std::string_view showDockIcon = "cindertop.app.show-dock-icon";
constexpr std::string_view diagnosticsEnabled = "cindertop.diagnostics.enabled";
constexpr std::string_view notificationsEnabled = "cindertop.notifications.enabled";
constexpr std::string_view minimumLevel = "cindertop.notifications.minimum-level";
constexpr std::string_view verbosity = "cindertop.assistant.recommendation-verbosity";
constexpr std::string_view showProcessOffenders = "cindertop.assistant.show-process-offenders";
constexpr std::string_view showContextInsights = "cindertop.assistant.show-context-insights";
constexpr std::string_view historyEnabled = "cindertop.history.enabled";
constexpr std::string_view historyDuration = "cindertop.history.duration-minutes";
constexpr std::string_view temperatureUnit = "cindertop.thermal.temperature-unit";

// No longer used.
constexpr std::string_view keyboardReaction = "cindertop.keyboard.reaction-enabled";
constexpr std::string_view keyboardSos = "cindertop.keyboard.sos-enabled";
constexpr std::string_view effectActivationLevel = "cindertop.thermal.effect-activation-level";
constexpr std::string_view effectsIntensity = "cindertop.effects.intensity";

} // namespace keys

/// Removed at each start.
constexpr std::array retiredKeys{keys::keyboardReaction, keys::keyboardSos, keys::effectActivationLevel};

template <typename Enumeration>
PropertyValue rawText(Enumeration value) {
    return std::string(rawValue(value));
}

UserDefaultsChange storing(std::string_view key, PropertyValue value) {
    return {std::string(key), std::move(value)};
}

UserDefaultsChange removing(std::string_view key) {
    return {std::string(key), std::nullopt};
}

/// Every field under its key, in the order in which they are written.
std::vector<UserDefaultsChange> storingEveryField(const AppSettingsFields& settings) {
    return {
        storing(keys::schemaVersion, settings.schemaVersion),
        storing(keys::experimentalSensors, settings.experimentalTemperatureSensorsEnabled),
        storing(keys::menuBarInfoMode, rawText(settings.menuBarInfoMode)),
        storing(keys::showDockIcon, settings.showDockIcon),
        storing(keys::diagnosticsEnabled, settings.diagnosticLogsEnabled),
        storing(keys::notificationsEnabled, settings.notificationsEnabled),
        storing(keys::minimumLevel, rawText(settings.notificationMinimumLevel)),
        storing(keys::verbosity, rawText(settings.recommendationVerbosity)),
        storing(keys::showProcessOffenders, settings.showProcessOffenders),
        storing(keys::showContextInsights, settings.showContextInsights),
        storing(keys::historyEnabled, settings.historyEnabled),
        storing(keys::historyDuration, settings.historyDurationMinutes),
        storing(keys::temperatureUnit, rawText(settings.temperatureUnit)),
    };
}

UserDefaults::Registration registration(const AppSettings& standard) {
    UserDefaults::Registration registration;
    for (const auto& [key, value] : storingEveryField(*standard)) {
        registration.emplace(key, *value);
    }
    return registration;
}

AppSettingsFields storedFields(const UserDefaults& defaults, const AppSettingsFields& fallback) {
    const auto boolean = [&](std::string_view key, bool otherwise) {
        return storedBoolean(defaults.value(key)).value_or(otherwise);
    };
    const auto integer = [&](std::string_view key, std::int64_t otherwise) {
        return storedInteger(defaults.value(key)).value_or(otherwise);
    };
    return {
        .schemaVersion = integer(keys::schemaVersion, fallback.schemaVersion),
        .experimentalTemperatureSensorsEnabled =
            boolean(keys::experimentalSensors, fallback.experimentalTemperatureSensorsEnabled),
        .menuBarInfoMode =
            storedMenuBarInfoMode(defaults.value(keys::menuBarInfoMode)).value_or(fallback.menuBarInfoMode),
        .showDockIcon = boolean(keys::showDockIcon, fallback.showDockIcon),
        .diagnosticLogsEnabled = boolean(keys::diagnosticsEnabled, fallback.diagnosticLogsEnabled),
        .notificationsEnabled = boolean(keys::notificationsEnabled, fallback.notificationsEnabled),
        .notificationMinimumLevel = storedMinimumLevel(defaults.value(keys::minimumLevel))
                                        .value_or(fallback.notificationMinimumLevel),
        .recommendationVerbosity =
            storedVerbosity(defaults.value(keys::verbosity)).value_or(fallback.recommendationVerbosity),
        .showProcessOffenders = boolean(keys::showProcessOffenders, fallback.showProcessOffenders),
        .showContextInsights = boolean(keys::showContextInsights, fallback.showContextInsights),
        .historyEnabled = boolean(keys::historyEnabled, fallback.historyEnabled),
        .historyDurationMinutes = integer(keys::historyDuration, fallback.historyDurationMinutes),
        .temperatureUnit =
            storedTemperatureUnit(defaults.value(keys::temperatureUnit)).value_or(fallback.temperatureUnit),
    };
}

/// Migrates settings of an older version before they are read.
std::vector<UserDefaultsChange> migration(std::int64_t storedVersion) {
    std::vector<UserDefaultsChange> changes;
    if (storedVersion >= appSettingsSchemaVersion) {
        return changes;
    }
    changes.push_back(removing(keys::effectsIntensity));
    if (storedVersion < 11) { // notifications were not asked for then
        changes.push_back(storing(keys::notificationsEnabled, false));
    }
    changes.push_back(storing(keys::showProcessOffenders, true));
    return changes;
}

} // namespace

bool AppSettingsStore::isNew() const {
    const auto isStored = [this](std::string_view key) { return defaults_.value(key).has_value(); };
    return std::ranges::none_of(storingEveryField(*standard_), isStored, &UserDefaultsChange::key) &&
           std::ranges::none_of(retiredKeys, isStored) && !isStored(keys::effectsIntensity);
}

void AppSettingsStore::migrate() {
    auto changes = isNew() ? std::vector<UserDefaultsChange>()
                           : migration(storedInteger(defaults_.value(keys::schemaVersion)).value_or(0));
    std::ranges::transform(retiredKeys, std::back_inserter(changes), removing);
    defaults_.apply(changes);
}

AppSettings AppSettingsStore::load() {
    migrate();
    defaults_.registerDefaults(registration(standard_));
    const AppSettings settings(storedFields(defaults_, *standard_));
    save(settings);
    return settings;
}

void AppSettingsStore::save(const AppSettings& settings) {
    auto changes = storingEveryField(*settings);
    changes.push_back(removing(keys::effectsIntensity));
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
