#include "app/Preferences.h"

#include <gtest/gtest.h>

#include <array>
#include <string_view>

namespace cindertop {
namespace {

TEST(Preferences, AreElevenAndKnownByTheirNames) {
    EXPECT_EQ(preferences().size(), 11);
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

} // namespace
} // namespace cindertop
