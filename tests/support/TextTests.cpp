#include "support/Text.h"

#include <gtest/gtest.h>

#include <array>

// NOLINTBEGIN(modernize-use-designated-initializers): the struct of a table's rows names its columns
namespace cindertop {

namespace {

struct Case {
    std::string_view text;
    std::string_view expected;
};

TEST(Text, LowerCaseIsTheSameInEveryLanguage) {
    for (const auto& [text, expected] : std::to_array<Case>({
             {"PMU TDIE 7[@`{", "pmu tdie 7[@`{"},
             {"ÄÉÎ Größe", "äéî größe"},
             {"TITAN I", "titan i"}, // Turkish would have a dotless i
             {"ΟΔΟΣ", "οδος"},       // the last sigma is another letter
             {"\xff"
              "ABC",
              "\uFFFD"
              "abc"},
         })) {
        EXPECT_EQ(lowerCased(text), expected);
    }
}

TEST(Text, EachMaximalInvalidSequenceBecomesOneReplacement) {
    for (const auto& [bytes, expected] : std::to_array<Case>({
             {"Größe 😀", "Größe 😀"},
             {{"a\0b", 3}, {"a\0b", 3}},
             {"\xe2\x82", "\uFFFD"},                           // cut at the end: one sequence
             {"\xf0\x9f\x98 b", "\uFFFD b"},                   // cut in the middle
             {"\xc3\xc3\xa9", "\uFFFDé"},                      // a start instead of a continuation
             {"\xe0\x80\xaf", "\uFFFD\uFFFD\uFFFD"},           // overlong
             {"\xed\xa0\x80", "\uFFFD\uFFFD\uFFFD"},           // a surrogate
             {"\xf4\x90\x80\x80", "\uFFFD\uFFFD\uFFFD\uFFFD"}, // beyond Unicode
         })) {
        EXPECT_EQ(repairedUtf8(bytes), expected) << testing::PrintToString(std::string(bytes));
    }
}

TEST(Text, TrimsControlAndFormatCharactersAtBothEndsOnly) {
    for (const auto& [text, expected] : std::to_array<Case>({
             {" name ", " name "}, // a blank is no control character
             {"\n\t\x1b[name\x7f\r", "[name"},
             {"a\nb\u200Bc", "a\nb\u200Bc"},
             {"\u200B\uFEFF\u00ADname\u0085\u202E", "name"}, // Cf and C1 controls
             {"\U000E0001name\U000E007F", "name"},           // format characters beyond 16 bits
             {"\x01\u200B\x02", ""},
             {"\u00A0é\u3000", "\u00A0é\u3000"}, // wide blanks are no control characters
             {"\xff\nname\n\xff", "\xff\nname\n\xff"},
             {{"\0name\0", 6}, "name"},
         })) {
        EXPECT_EQ(trimmingControlCharacters(text), expected) << testing::PrintToString(std::string(text));
    }
}

static_assert(untilZeroByte({"abc\0def", 7}) == "abc");
static_assert(untilZeroByte("abcd") == "abcd");

} // namespace

} // namespace cindertop

// NOLINTEND(modernize-use-designated-initializers)
