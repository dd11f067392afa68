#include "EnvironmentVariables.h"
#include "support/DateText.h"
#include "support/Instant.h"
#include "support/Text.h"
#include "support/UserFolders.h"

#include <gtest/gtest.h>

#include <array>
#include <map>
#include <string>

namespace cindertop {
namespace {

TEST(Characters, AreCountedAsPeopleCountThem) {
    struct Case {
        std::string_view text;
        std::size_t count;
        std::string_view first;
    };

    for (const auto& [text, count, first] : std::to_array<Case>({
             {"abc", 2, "ab"},
             {"abc", 0, ""},
             {"ae\u0301b", 2, "ae\u0301"},
             {"ae\u0301", 1, "a"},
             {"e\u0301\u0302\u0303", 1, "e\u0301\u0302\u0303"},
             {"👨‍👩‍👧‍👦🇩🇪x", 2, "👨‍👩‍👧‍👦🇩🇪"},
             {"a\r\nb", 2, "a\r\n"},
         })) {
        EXPECT_EQ(firstCharacters(text, count), first) << text;
        EXPECT_EQ(truncated(text, count), std::string(first) + (first == text ? "" : "..."));
    }
}

Instant at(std::string_view text) {
    return parseUtcText(text).value();
}

TEST(CalendarDays, FollowTheUsersZone) {
    const auto days = CalendarDays::ofUser();
    for (const auto& [zone, day] :
         {std::pair("UTC", "2026-03-05"), std::pair("Asia/Tokyo", "2026-03-06"),
          std::pair("America/New_York", "2026-03-05"), std::pair("CST-8", "2026-03-06")}) {
        const EnvironmentVariables travelled(EnvironmentVariables::Values{{"TZ", zone}});
        EXPECT_EQ(days.identifier(at("2026-03-05T17:00:00Z")), day) << zone;
        EXPECT_EQ(localTime(at("2026-03-05T17:00:00Z")).tm_mday, day[9] - '0') << zone;
    }
}

TEST(CalendarDays, BeginAtMidnightOfTheirZone) {
    struct Case {
        const char* zone;
        std::string_view instant;
        std::string_view day;
    };

    for (const auto& [zone, instant, day] : std::to_array<Case>({
             {"UTC", "2025-03-05T23:59:59Z", "2025-03-05"},
             {"Asia/Kolkata", "2025-03-05T18:29:59Z", "2025-03-05"},
             {"Asia/Kolkata", "2025-03-05T18:30:00Z", "2025-03-06"},
             {"Europe/Berlin", "2025-03-30T22:00:00Z", "2025-03-31"}, // summer time since that morning
             {"Europe/Berlin", "2025-10-26T22:59:59Z", "2025-10-26"},
             {"Pacific/Apia", "2011-12-30T09:59:59Z", "2011-12-29"}, // the 30th was left out there
             {"Pacific/Apia", "2011-12-30T10:00:00Z", "2011-12-31"},
             {"No/Where", "2025-03-05T00:00:00Z", "2025-03-05"},
         })) {
        EXPECT_EQ(CalendarDays(zone).identifier(at(instant)), day) << zone << ' ' << instant;
    }
    EXPECT_EQ(
        CalendarDays("UTC").identifier(at("1999-12-31T23:59:59Z") + std::chrono::nanoseconds(999'999'999)),
        "1999-12-31");
    for (const Instant end : {Instant::min(), Instant::max()}) {
        EXPECT_EQ(CalendarDays("UTC").identifier(end).size(), 10U);
    }
}

TEST(UserFolders, FollowTheEnvironment) {
    const auto folders = [](const std::map<std::string, std::string, std::less<>>& variables) {
        return UserFolders([&](std::string_view name) -> std::optional<std::string> {
            const auto found = variables.find(name);
            return found == variables.end() ? std::nullopt : std::optional(found->second);
        });
    };
    const auto usual = folders({{"HOME", "/home/me"}});
    EXPECT_EQ(usual.programData(), "/home/me/.local/share/Cindertop");
    EXPECT_EQ(usual.programConfig(), "/home/me/.config/Cindertop");
    const auto chosen =
        folders({{"HOME", "/home/me"}, {"XDG_DATA_HOME", "/data"}, {"XDG_CONFIG_HOME", "relative"}});
    EXPECT_EQ(chosen.data, "/data");
    EXPECT_EQ(chosen.config, "/home/me/.config");
    EXPECT_TRUE(folders({{"HOME", ""}}).data.is_absolute());
}

using namespace std::chrono_literals;

TEST(Instant, DifferencesAreDividedOnceFromExactNanoseconds) {
    // Far from the epoch a difference of rounded seconds would err in the seventh digit.
    const Instant start{1'753'920'000s + 1ns};
    EXPECT_EQ(secondsBetween(start, start + 119'900ms).count(), 119.9);
    EXPECT_EQ(secondsBetween(start, start + 200ms).count(), 0.2);
    EXPECT_EQ(secondsBetween(start, start + 1ns).count(), 1e-9);
    EXPECT_EQ(secondsBetween(start + 1'500ms, start).count(), -1.5);
    EXPECT_EQ(secondsBetween(start, start).count(), 0);
}

} // namespace
} // namespace cindertop
