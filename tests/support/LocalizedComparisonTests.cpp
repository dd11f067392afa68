#include "EnvironmentVariables.h"
#include "support/LocalizedComparison.h"
#include "support/UserLocale.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <thread>
#include <vector>

// NOLINTBEGIN(modernize-use-designated-initializers): the struct of a table's rows names its columns
namespace cindertop {

namespace {

int signOf(int number) {
    return number < 0 ? -1 : std::min(number, 1);
}

TEST(LocalizedComparison, FollowsTheLanguageWithCaseAlikeAndAccentsTold) {
    struct Case {
        std::string locale;
        std::string_view left;
        std::string_view right;
        int expected;
    };

    for (const auto& [locale, left, right, expected] : std::to_array<Case>({
             {"en_GB", "Safari", "sAFARI", 0},
             {"en_GB", "zoom", "Xcode", 1}, // bytes would say otherwise
             {"en_GB", "resume", "résumé", -1},
             {"en_GB", "résumé", "resumf", -1},
             {"en_GB", "Äpfel", "Zebra", -1},
             {"sv_SE.UTF-8", "Äpfel", "Zebra", 1}, // there ä follows z
             {"de_DE@euro", "Äpfel", "Zebra", -1},
             {"C", "Zebra", "apfel", 1}, // no byte order, as ICU has it for C
             {"POSIX", "apfel", "APFEL", 0},
             {"C.UTF-8", "Zebra", "apfel", 1},
             {"xx_YY", "Zebra", "apfel", 1},
             {"", "Zebra", "apfel", 1},
             {"en_GB", "Cafe\u0301", "café", 0}, // composed or not is the same
             {"en_GB", "", "a", -1},
             {"en_GB", "10", "9", -1},
         })) {
        const LocalizedComparison comparison(locale);
        EXPECT_EQ(signOf(comparison.compare(left, right)), expected)
            << locale << ": " << left << ", " << right;
        EXPECT_EQ(signOf(comparison.compare(right, left)), -expected);
    }
}

TEST(LocalizedComparison, KeysSortAsComparingDoes) {
    const std::vector<std::string> texts{"",        "a",     "A",    "ab",   "á",
                                         "b",       "Zoë",   "zoe",  "10",   "9",
                                         "Ärger",   "Arger", "日本", "\xff", "é",
                                         "e\u0301", "a\xe2", "ß",    "ss",   "long " + std::string(300, 'x')};
    for (const auto* const locale : {"en_GB", "sv_SE", "C"}) {
        const LocalizedComparison comparison(locale);
        for (const auto& left : texts) {
            for (const auto& right : texts) {
                EXPECT_EQ(signOf(comparison.sortKey(left).compare(comparison.sortKey(right))),
                          signOf(comparison.compare(left, right)))
                    << locale << ": " << left << ", " << right;
            }
        }
    }
}

TEST(LocalizedComparison, MayBeUsedFromSeveralThreads) {
    const LocalizedComparison comparison("en_GB");
    std::array<std::vector<std::string>, 4> sorted;
    {
        std::vector<std::jthread> threads;
        threads.reserve(sorted.size());
        for (auto& names : sorted) {
            threads.emplace_back([&names, &comparison] {
                names = {"zoom", "Xcode", "élan", "Elan", "safari"};
                std::ranges::sort(names, [&comparison](const auto& left, const auto& right) {
                    return comparison.compare(left, right) < 0;
                });
            });
        }
    }
    for (const auto& names : sorted) {
        EXPECT_EQ(names, (std::vector<std::string>{"Elan", "élan", "safari", "Xcode", "zoom"}));
    }
}

TEST(UserLocale, TakesTheFirstVariableThatSaysSomething) {
    struct Case {
        std::optional<std::string> all;
        std::optional<std::string> category;
        std::optional<std::string> language;
        std::string expected;
    };

    for (const auto& [all, category, language, expected] : std::to_array<Case>({
             {"de_DE.UTF-8", "sv_SE", "fr_FR", "de_DE.UTF-8"},
             {"", "sv_SE", "fr_FR", "sv_SE"},
             {std::nullopt, "", "fr_FR", "fr_FR"},
             {std::nullopt, std::nullopt, std::nullopt, "C"},
         })) {
        const EnvironmentVariables variables({{"LC_ALL", all}, {"LC_COLLATE", category}, {"LANG", language}});
        EXPECT_EQ(userLocaleName("LC_COLLATE"), expected);
    }
}

TEST(UserLocale, NamesAreTurnedIntoIcuNames) {
    for (const auto& [posix, icu] : std::to_array<std::pair<std::string_view, std::string_view>>({
             {"de_DE.UTF-8", "de_DE"},
             {"de_DE.ISO-8859-15@euro", "de_DE"},
             {"de@collation=phonebook", "de@collation=phonebook"},
             {"C", ""},
             {"C.UTF-8", ""},
             {"POSIX", ""},
             {"", ""},
         })) {
        EXPECT_EQ(icuLocaleName(posix), icu);
    }
}

} // namespace

} // namespace cindertop

// NOLINTEND(modernize-use-designated-initializers)
