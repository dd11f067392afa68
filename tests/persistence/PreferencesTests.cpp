#include "persistence/Preferences.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string_view>

namespace cindertop {
namespace {

TEST(Preferences, AreTwelveAndKnownByTheirNames) {
    EXPECT_EQ(preferences().size(), 12);
    for (const auto& preference : preferences()) {
        EXPECT_EQ(findPreference(preference.name), &preference) << preference.name;
        AppSettingsFields fields;
        const auto word = text(preference.read(fields));
        ASSERT_TRUE(preference.write(fields, preferenceValue(preference, word))) << preference.name;
        EXPECT_EQ(fields, AppSettingsFields()) << preference.name << ": its own text changes it";
    }
    for (const auto* name : {"", "schemaVersion", "ShowDockIcon", "showDockIcon "}) {
        EXPECT_EQ(findPreference(name), nullptr) << name;
    }
}

TEST(Preferences, TakeAPersonsWord) {
    struct Case {
        std::string_view name;
        std::string_view word;
        std::string_view result; ///< the value, or what it has to be
    };

    constexpr std::string_view flag = "has to be true or false";
    constexpr std::string_view number = "has to be a whole number";
    constexpr std::string_view level = "has to be one of serious, critical";
    for (const auto& [name, word, result] : std::to_array<Case>({
             {"showDockIcon", "on", "true"},
             {"showDockIcon", "1", "true"},
             {"historyEnabled", "off", "false"},
             {"showDockIcon", "On", flag},
             {"showDockIcon", "", flag},
             {"historyDurationMinutes", "90", "90"},
             {"historyDurationMinutes", "-5", "-5"}, // brought into its range where it is used
             {"historyDurationMinutes", "90.0", number},
             {"historyDurationMinutes", "9223372036854775808", number},
             {"notificationMinimumLevel", "critical", "critical"},
             {"notificationMinimumLevel", "Critical", level},
         })) {
        const auto& preference = *findPreference(name);
        AppSettingsFields fields;
        const auto written = preference.write(fields, preferenceValue(preference, word));
        EXPECT_EQ(written ? text(preference.read(fields)) : written.error(), result) << name << ' ' << word;
        EXPECT_TRUE(written || fields == AppSettingsFields()) << name << ": refused, and yet changed";
    }
}

TEST(Preferences, SayWhatIsAllowedAndWhatBecameOfAValue) {
    struct Case {
        std::string_view name;
        PreferenceValue value;
        std::string_view allowed;
        std::string_view refusal;
        std::string_view remark;
    };

    const AppSettingsFields current{.menuBarInfoMode = MenuBarInfoMode::temperature};
    constexpr std::string_view modes = "none, thermalStatus, temperature";
    for (const auto& [name, value, allowed, refusal, remark] : std::to_array<Case>({
             {"historyDurationMinutes", std::int64_t{181}, "15 to 180", "",
              "historyDurationMinutes is 180 now: 180 is the most"},
             {"historyDurationMinutes", std::int64_t{-5}, "15 to 180", "",
              "historyDurationMinutes is 15 now: 15 is the least"},
             {"historyDurationMinutes", std::int64_t{180}, "15 to 180", "", ""},
             {"menuBarInfoMode", "temperature", modes,
              "temperature needs sensors: set experimentalTemperatureSensorsEnabled to true first", ""},
             {"menuBarInfoMode", "thermalScore", modes, "has to be one of none, thermalStatus, temperature",
              ""},
             {"menuBarInfoMode", "thermalStatus", modes, "", ""},
             {"showProcessOffenders", false, "true",
              "stays true: advice and alerts are made from what it finds", ""},
             {"showProcessOffenders", true, "true", "", ""},
             {"experimentalTemperatureSensorsEnabled", false, "true or false", "",
              "menuBarInfoMode is none now: temperature needs sensors"},
             {"temperatureUnit", "celsius", "region, celsius, fahrenheit", "", ""},
         })) {
        const auto& preference = *findPreference(name);
        EXPECT_EQ(allowedValues(preference), allowed);
        const auto offered = checkIsOffered(preference, value, current);
        EXPECT_EQ(offered ? "" : offered.error(), refusal) << name;
        EXPECT_EQ(remarkOn(preference, value, current), remark) << name;
        EXPECT_FALSE(preference.description.empty() || preference.description.size() > 76) << name;
    }
}

} // namespace
} // namespace cindertop
