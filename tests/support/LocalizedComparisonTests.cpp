#include "support/LocalizedComparison.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

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
             {"sv_SE.UTF-8", "Äpfel", "Zebra", 1}, // there ä follows z
             {"de_DE.ISO-8859-15@euro", "Äa", "Ab", -1},
             {"de@collation=phonebook", "Äa", "Ab", 1}, // there ä is ae
             {"C", "Zebra", "apfel", 1},                // no byte order, as ICU has it for C
             {"", "Zebra", "apfel", 1},
             {"en_GB", "Cafe\u0301", "café", 0}, // composed or not is the same
             {"en_GB", "10", "9", -1},
         })) {
        const LocalizedComparison comparison(locale);
        EXPECT_EQ(signOf(comparison.compare(left, right)), expected)
            << locale << ": " << left << ", " << right;
        EXPECT_EQ(signOf(comparison.compare(right, left)), -expected);
    }
}

} // namespace

} // namespace cindertop

// NOLINTEND(modernize-use-designated-initializers)
