#include "EnvironmentVariables.h"
#include "fakes/TemporaryFolder.h"
#include "support/TemperatureText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <chrono>

// NOLINTBEGIN(modernize-use-designated-initializers): the struct of a table's rows names its columns
namespace cindertop {

namespace {

TEST(TemperatureText, PlainRuleRoundsHalvesAwayFromZeroInEveryLanguage) {
    struct Case {
        std::string locale;
        double celsius;
        std::string expected;
    };

    for (const auto& [locale, celsius, expected] : std::to_array<Case>({
             {"en_GB", 36.4, "36°C"},
             {"en_GB", 36.5, "37°C"},
             {"en_GB", -8.5, "-9°C"},
             {"en_GB", -0.4, "0°C"},
             {"ar_EG", 36, "36°C"},
             {"en_US", 36, "97°F"},
             {"es_PR", -18, "0°F"},
             {"en_US", -17.5, "1°F"}, // exactly 0.5
             {"zh_Hant_US", 100, "212°F"},
             {"en_BS", 0, "32°F"},
             {"en_BZ", 0, "32°F"},
             {"en_KY", 0, "32°F"},
             {"en_PW", 0, "32°F"},
             {"US", 36, "36°C"}, // a language, no region
             {"en_us", 36, "36°C"},
             {"", 36, "36°C"},
         })) {
        EXPECT_EQ(TemperatureFormatter::plain(locale).text(celsius), expected) << locale << " " << celsius;
    }
}

TEST(TemperatureText, LiveTextConvertsFirstAndFollowsTheLanguage) {
    using enum TemperatureFormatter::Unit;

    struct Case {
        std::string locale;
        TemperatureFormatter::Unit unit;
        double celsius;
        std::string expected;
    };

    for (const auto& [locale, unit, celsius, expected] : std::to_array<Case>({
             {"en_GB.UTF-8", celsius, 36.5, "37°C"},
             {"en_US", fahrenheit, 36, "97°F"},
             {"en_US", celsius, 37.5, "38°C"}, // half up, not half even
             {"C", fahrenheit, 36, "97°F"},
             {"de_DE.UTF-8", celsius, 36, "36 °C"},
             {"sv_SE", celsius, -8, "\u22128 °C"},
             {"en_GB", celsius, -0.4, "0°C"},
             {"fa_IR", celsius, 36, "\u06F3\u06F6°C"},
         })) {
        EXPECT_EQ(TemperatureFormatter(locale, unit).text(celsius), expected) << locale << " " << celsius;
    }
}

TEST(TemperatureText, TheEnvironmentDecidesUnitAndLanguageApart) {
    struct Case {
        EnvironmentVariables::Values variables;
        std::string expected;
    };

    for (const auto& [variables, expected] : std::to_array<Case>({
             {{{"LANG", "en_US.UTF-8"}, {"LC_MEASUREMENT", "de_DE.UTF-8"}}, "36°C"},
             {{{"LANG", "de_DE.UTF-8"}, {"LC_MEASUREMENT", "en_US.UTF-8"}}, "97 °F"},
             {{{"LANG", "de_DE.UTF-8"}, {"LC_NUMERIC", "en_US.UTF-8"}}, "36°C"},
             {{{"LANG", "en_US.UTF-8"}, {"LC_ALL", "de_DE.UTF-8"}}, "36 °C"},
             {{{"LANG", "en_US"}, {"LC_ALL", "POSIX"}}, "36°C"},
             {{{"LANG", "en_US"}, {"LC_ALL", ""}, {"LC_MEASUREMENT", ""}}, "97°F"},
             {{}, "36°C"},
         })) {
        const EnvironmentVariables none(
            {{"LC_ALL", {}}, {"LC_MEASUREMENT", {}}, {"LC_NUMERIC", {}}, {"LANG", {}}});
        const EnvironmentVariables set(variables);
        EXPECT_EQ(TemperatureFormatter::ofUser().text(36.0), expected);
    }
}

TEST(TemperatureText, FollowsTheSystemsFileWhereTheSessionDoes) {
    struct Case {
        const char* what;
        EnvironmentVariables::Values variables;
        std::string later;
        std::string expected;
    };

    for (const auto& [what, variables, later, expected] : std::to_array<Case>({
             {"moved", {{"LANG", "en_US.UTF-8"}}, "LANG=de_DE.UTF-8\n", "36 °C"},
             {"only the unit",
              {{"LANG", "en_US.UTF-8"}},
              "# own\nLANG='en_US.UTF-8'\nLC_MEASUREMENT=\"en_GB.UTF-8\"",
              "36°C"},
             {"the session's own", {{"LANG", "en_PR"}}, "LANG=de_DE.UTF-8\n", "97°F"},
             {"gone", {{"LANG", "en_US.UTF-8"}}, "", "36°C"},
         })) {
        const fakes::TemporaryFolder folder;
        const auto file = folder / "locale.conf";
        const EnvironmentVariables none(
            {{"LC_ALL", {}}, {"LC_MEASUREMENT", {}}, {"LC_NUMERIC", {}}, {"LANG", {}}});
        const EnvironmentVariables set(variables);
        fakes::writeText(file, "LANG=en_US.UTF-8\n");
        const auto formatter = TemperatureFormatter::ofUser(FollowedLocale(file));
        EXPECT_EQ(formatter.text(36.0), "97°F") << what;
        fakes::writeText(file, later);
        std::filesystem::last_write_time(file, std::filesystem::file_time_type::clock::now() +
                                                   std::chrono::seconds(5));
        EXPECT_EQ(formatter.text(36.0), expected) << what;
    }
}

} // namespace

} // namespace cindertop

// NOLINTEND(modernize-use-designated-initializers)
