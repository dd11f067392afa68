#include "support/AsciiRanks.h"

#include <gtest/gtest.h>
#include <unicode/coll.h>

#include <array>
#include <memory>
#include <random>
#include <span>
#include <string>

namespace cindertop {
namespace {

std::unique_ptr<icu::Collator> collatorOf(const icu::Locale& locale) {
    auto status = U_ZERO_ERROR;
    std::unique_ptr<icu::Collator> collator(icu::Collator::createInstance(locale, status));
    collator->setAttribute(UCOL_STRENGTH, UCOL_SECONDARY, status);
    EXPECT_TRUE(U_SUCCESS(status)) << locale.getName();
    return collator;
}

int signOf(int number) {
    return (number > 0 ? 1 : 0) - (number < 0 ? 1 : 0);
}

/// Mostly pairs that some language takes for one letter, or for another one.
std::string randomText(std::mt19937& random) {
    static constexpr std::array pieces{"ch", "aa", "dz", "lj", "ll", "ss", "v", "w", "Cs", "Y", "i", "I"};
    std::uniform_int_distribution<std::size_t> piece(0, 2 * pieces.size());
    std::uniform_int_distribution<int> letter(' ', '~');
    std::string text;
    for (int left = std::uniform_int_distribution<int>(0, 4)(random); left > 0; --left) {
        const std::size_t chosen = piece(random);
        text +=
            chosen < pieces.size() ? pieces.at(chosen) : std::string(1, static_cast<char>(letter(random)));
    }
    return text;
}

TEST(AsciiRanks, SortAsTheRulesOfEveryLanguageDo) {
    std::mt19937 random(42);
    std::int32_t count = 0;
    const auto* const locales = icu::Collator::getAvailableLocales(count);
    int ranked = 0;
    for (const icu::Locale& locale : std::span(locales, static_cast<std::size_t>(count))) {
        const auto collator = collatorOf(locale);
        const auto ranks = AsciiRanks::of(*collator);
        if (!ranks) {
            continue;
        }
        ++ranked;
        for (int round = 0; round < 200; ++round) {
            const std::string left = randomText(random);
            const std::string right = randomText(random);
            auto status = U_ZERO_ERROR;
            const int expected = collator->compareUTF8(left, right, status);
            EXPECT_EQ(ranks->compare(left, right), expected)
                << locale.getName() << ": " << left << ", " << right;
            EXPECT_EQ(signOf(ranks->sortKey(left).compare(ranks->sortKey(right))), expected);
        }
    }
    EXPECT_GT(ranked, 20);
}

TEST(AsciiRanks, ExistOnlyWhereAsciiSortsByItsCharacters) {
    struct Case {
        const char* locale;
        bool exist;
    };

    for (const auto& [locale, exist] : std::to_array<Case>({
             {"en_GB", true},
             {"de_DE", true},
             {"fr_CA", true},
             {"cs_CZ", false}, // "ch" is a letter
             {"da_DK", false}, // so is "aa"
             {"et_EE", false}, // z follows s
             {"en@colNumeric=yes", false},
             {"en@colAlternate=shifted", false},
         })) {
        EXPECT_EQ(AsciiRanks::of(*collatorOf(icu::Locale(locale))).has_value(), exist) << locale;
    }
}

TEST(AsciiRanks, CoverPrintableAsciiOnly) {
    const auto ranks = AsciiRanks::of(*collatorOf(icu::Locale("en")));
    ASSERT_TRUE(ranks);
    EXPECT_TRUE(ranks->cover(""));
    EXPECT_TRUE(ranks->cover(" az~"));
    for (const std::string_view other : {"a\tb", "\x7f", "\u00e9", "\xff"}) {
        EXPECT_FALSE(ranks->cover(other)) << other;
    }
}

} // namespace
} // namespace cindertop
