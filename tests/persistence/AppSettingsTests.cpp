#include "fakes/FakeUserDefaults.h"
#include "persistence/AppSettingsStore.h"
#include "persistence/StoredValueReaders.h"
#include "persistence/UnstoredUserDefaults.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace cindertop {
namespace {

using fakes::FakeUserDefaults;
using std::string_literals::operator""s;
using enum OperatingSystem;

constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();

/// The changes of one save of these settings, in their order.
std::vector<UserDefaultsChange> changesOf(const AppSettings& settings) {
    FakeUserDefaults defaults;
    AppSettingsStore(defaults, defaultSettings(mac)).save(settings);
    return defaults.changes;
}

TEST(AppSettings, AreRepaired) {
    EXPECT_EQ(AppSettings({.schemaVersion = 3, .showProcessOffenders = false}), AppSettings());
    for (const auto& [given, kept] : std::to_array<std::pair<std::int64_t, std::int64_t>>(
             {{std::numeric_limits<std::int64_t>::min(), 15}, {15, 15}, {16, 16}, {180, 180}, {most, 180}})) {
        EXPECT_EQ(AppSettings({.historyDurationMinutes = given})->historyDurationMinutes, kept);
    }
    using enum MenuBarInfoMode;
    const std::array given{none, thermalStatus, temperature, thermalScore, compactAlertOnly};
    const std::array keptWithSensors{none, thermalStatus, temperature, thermalStatus, thermalStatus};
    const std::array keptWithout{none, thermalStatus, none, thermalStatus, thermalStatus};
    for (std::size_t index = 0; index < given.size(); ++index) {
        const auto kept = [&](bool hasSensors) {
            return AppSettings({.experimentalTemperatureSensorsEnabled = hasSensors,
                                .menuBarInfoMode = given.at(index)})
                ->menuBarInfoMode;
        };
        EXPECT_EQ(kept(true), keptWithSensors.at(index));
        EXPECT_EQ(kept(false), keptWithout.at(index));
    }
    EXPECT_EQ(AppSettingsStore::availableMenuBarInfoModes(true),
              (std::vector{none, thermalStatus, temperature}));
    EXPECT_EQ(AppSettingsStore::availableMenuBarInfoModes(false), (std::vector{none, thermalStatus}));
}

TEST(StoredValues, AreUnderstoodWhateverTheirType) {
    const auto booleans = [](const std::vector<PropertyValue>& values, std::optional<bool> meaning) {
        for (const auto& value : values) {
            EXPECT_EQ(storedBoolean(value), meaning) << testing::PrintToString(value);
        }
    };
    booleans({true, std::int64_t{-7}, 0.5, "true"s, " YES\n"s, "1"s}, true);
    booleans({false, std::int64_t{0}, 0.0, "False"s, "\tno "s, "0"s}, false);
    booleans({"maybe"s, ""s, "45"s}, std::nullopt);
    const auto integers = [](const std::vector<PropertyValue>& values, std::optional<std::int64_t> meaning) {
        for (const auto& value : values) {
            EXPECT_EQ(storedInteger(value), meaning) << testing::PrintToString(value);
        }
    };
    integers({std::int64_t{45}, 45.9, "45"s, "+45"s}, 45);
    integers({-45.9, "-45"s}, -45);
    integers({1e300, "9223372036854775807"s}, most);
    integers({-1e300, "-9223372036854775808"s}, std::numeric_limits<std::int64_t>::min());
    integers({std::numeric_limits<double>::quiet_NaN(), "0"s}, 0);
    integers({true, ""s, " 45"s, "45 "s, "+-45"s, "+"s, "4.5"s, "9223372036854775808"s}, std::nullopt);
}

TEST(StoredValues, NameCases) {
    EXPECT_EQ(storedCase<MenuBarInfoMode>("temperature"s), MenuBarInfoMode::temperature);
    EXPECT_EQ(storedCase<MenuBarInfoMode>("Temperature"s), std::nullopt);
    EXPECT_EQ(storedCase<NotificationMinimumLevel>("throttling"s), NotificationMinimumLevel::serious);
    EXPECT_EQ(storedCase<NotificationMinimumLevel>("fair"s), std::nullopt);
    for (const PropertyValue& other : {PropertyValue(true), PropertyValue(std::int64_t{1})}) {
        EXPECT_EQ(storedCase<RecommendationVerbosity>(other), std::nullopt);
    }
}

TEST(AppSettingsStore, WritesEveryKeyInOrder) {
    const AppSettings settings({.experimentalTemperatureSensorsEnabled = true,
                                .menuBarInfoMode = MenuBarInfoMode::temperature,
                                .showDockIcon = true,
                                .diagnosticLogsEnabled = false,
                                .notificationsEnabled = true,
                                .notificationMinimumLevel = NotificationMinimumLevel::critical,
                                .recommendationVerbosity = RecommendationVerbosity::detailed,
                                .showContextInsights = false,
                                .historyEnabled = false,
                                .historyDurationMinutes = 75,
                                .temperatureUnit = TemperatureUnit::celsius});
    EXPECT_EQ(changesOf(settings), (std::vector<UserDefaultsChange>{
                                       {"cindertop.settings.schema-version", std::int64_t{12}},
                                       {"cindertop.thermal.experimental-sensors", true},
                                       {"cindertop.menu-bar.info-mode", "temperature"s},
                                       {"cindertop.app.show-dock-icon", true},
                                       {"cindertop.diagnostics.enabled", false},
                                       {"cindertop.notifications.enabled", true},
                                       {"cindertop.notifications.minimum-level", "critical"s},
                                       {"cindertop.assistant.recommendation-verbosity", "detailed"s},
                                       {"cindertop.assistant.show-process-offenders", true},
                                       {"cindertop.assistant.show-context-insights", false},
                                       {"cindertop.history.enabled", false},
                                       {"cindertop.history.duration-minutes", std::int64_t{75}},
                                       {"cindertop.thermal.temperature-unit", "celsius"s},
                                       {"cindertop.effects.intensity", std::nullopt},
                                   }));
    FakeUserDefaults defaults;
    AppSettingsStore store(defaults, defaultSettings(mac));
    store.save(settings);
    EXPECT_EQ(store.load(), settings);
    EXPECT_EQ(store.reset(), AppSettings());
    EXPECT_EQ(store.load(), AppSettings());
}

/// Everything that loading does before it saves, given a stored version.
std::vector<UserDefaultsChange> migrationFrom(const std::optional<PropertyValue>& version) {
    FakeUserDefaults defaults;
    if (version) {
        defaults.stored.emplace("cindertop.settings.schema-version", *version);
    }
    const auto saved = changesOf(AppSettingsStore(defaults, defaultSettings(mac)).load());
    const auto count = std::ssize(defaults.changes) - std::ssize(saved);
    EXPECT_TRUE(std::equal(saved.begin(), saved.end(), defaults.changes.begin() + count))
        << "loading ends by saving";
    return {defaults.changes.begin(), defaults.changes.begin() + count};
}

TEST(AppSettingsStore, MigratesOlderVersions) {
    const UserDefaultsChange intensity{"cindertop.effects.intensity", std::nullopt};
    const UserDefaultsChange notifications{"cindertop.notifications.enabled", false};
    const UserDefaultsChange offenders{"cindertop.assistant.show-process-offenders", true};
    const UserDefaultsChange reaction{"cindertop.keyboard.reaction-enabled", std::nullopt};
    const UserDefaultsChange sos{"cindertop.keyboard.sos-enabled", std::nullopt};
    const UserDefaultsChange effect{"cindertop.thermal.effect-activation-level", std::nullopt};
    const std::vector current{reaction, sos, effect};
    const std::vector fromEleven{intensity, offenders, reaction, sos, effect};
    const std::vector fromOlder{intensity, notifications, offenders, reaction, sos, effect};
    EXPECT_EQ(migrationFrom(std::int64_t{13}), current);
    EXPECT_EQ(migrationFrom(std::int64_t{12}), current);
    EXPECT_EQ(migrationFrom("12"s), current);
    EXPECT_EQ(migrationFrom(std::int64_t{11}), fromEleven);
    EXPECT_EQ(migrationFrom(std::int64_t{10}), fromOlder);
    EXPECT_EQ(migrationFrom(true), fromOlder);
    EXPECT_EQ(migrationFrom(std::nullopt), current) << "a new store";
}

TEST(AppSettingsStore, GivesANewUserTheDefaultsOfTheMachine) {
    const AppSettings onLinux({.experimentalTemperatureSensorsEnabled = true,
                               .menuBarInfoMode = MenuBarInfoMode::temperature,
                               .notificationsEnabled = true});
    EXPECT_EQ(defaultSettings(gnuLinux), onLinux);
    EXPECT_EQ(defaultSettings(mac), AppSettings());

    struct Case {
        FakeUserDefaults::Registration stored;
        AppSettings loaded;
    };

    const auto sensorsOn = AppSettings(
        {.experimentalTemperatureSensorsEnabled = true, .menuBarInfoMode = MenuBarInfoMode::temperature});
    for (const auto& [stored, loaded] : {
             Case{{}, onLinux},
             Case{{{"cindertop.legal.accepted", true}}, onLinux},
             // Older than the question for notifications, so nobody asked for them.
             Case{{{"cindertop.history.enabled", true}}, sensorsOn},
             Case{{{"cindertop.keyboard.sos-enabled", true}}, sensorsOn},
             Case{{{"cindertop.settings.schema-version", std::int64_t{12}},
                   {"cindertop.thermal.experimental-sensors", false},
                   {"cindertop.notifications.enabled", false}},
                  AppSettings()},
         }) {
        FakeUserDefaults defaults;
        defaults.stored = stored;
        AppSettingsStore store(defaults, defaultSettings(gnuLinux));
        EXPECT_EQ(store.load(), loaded);
        EXPECT_EQ(store.load(), loaded) << "stored as it was returned";
        EXPECT_EQ(store.reset(), onLinux);
        EXPECT_EQ(defaults.registered.at("cindertop.notifications.enabled"), PropertyValue(true));
    }
}

TEST(AppSettingsStore, ReadsEachFieldUnderItsKey) {
    FakeUserDefaults defaults;
    defaults.stored = {
        {"cindertop.settings.schema-version", std::int64_t{11}},
        {"cindertop.menu-bar.info-mode", "compactAlertOnly"s},
        {"cindertop.notifications.enabled", "yes"s},
        {"cindertop.history.duration-minutes", std::int64_t{5}},
        {"cindertop.diagnostics.enabled", "No"s},
        {"cindertop.app.show-dock-icon", "maybe"s},
        {"cindertop.thermal.temperature-unit", "kelvin"s},
        {"cindertop.legal.accepted", true},
    };
    const AppSettings expected({.menuBarInfoMode = MenuBarInfoMode::thermalStatus,
                                .diagnosticLogsEnabled = false,
                                .notificationsEnabled = true,
                                .historyDurationMinutes = 15});
    UnstoredUserDefaults onlyLooking(defaults);
    EXPECT_EQ(AppSettingsStore(onlyLooking, defaultSettings(mac)).load(), expected);
    EXPECT_TRUE(defaults.changes.empty());
    EXPECT_EQ(AppSettingsStore(defaults, defaultSettings(mac)).load(), expected);
    EXPECT_EQ(defaults.registered.size(), 13U);
    EXPECT_EQ(defaults.registered.at("cindertop.history.duration-minutes"), PropertyValue(std::int64_t{60}));
    EXPECT_EQ(defaults.stored.size(), 14U) << "the foreign key stays";
    EXPECT_EQ(defaults.stored.at("cindertop.diagnostics.enabled"), PropertyValue(false))
        << "repaired in the store";
}

} // namespace
} // namespace cindertop
