#include "terminal/DisplayText.h"
#include "terminal/StyledText.h"
#include "terminal/ValueText.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <string>

namespace cindertop::cli {
namespace {

TEST(DisplayText, ShowsHostileNamesHarmlessly) {
    struct Case {
        std::string name;
        std::string unicode;
        std::string ascii;
    };

    for (const auto& [name, unicode, ascii] : std::to_array<Case>({
             {"\x1b[2Jevil\r\n", "^[[2Jevil^M^J", "^[[2Jevil^M^J"},
             {std::string("a\0b\x7f", 4), "a^@b^?", "a^@b^?"},
             {"\xC2\x9B"
              "2J",
              "\uFFFD2J", "?2J"},                         // C1 control sequence introducer
             {"abc\u202Etxt", "abc\uFFFDtxt", "abc?txt"}, // turns the text around
             {"a\u2028b", "a\uFFFDb", "a?b"},
             {"\xFF\xFEx", "\uFFFD\uFFFDx", "??x"},
             {"größe", "größe", "gr??e"},
             {"36°C", "36°C", "36C"},
             {"👩\u200D💻", "👩💻", "??"},
             {"❤\uFE0F", "❤", "?"},
         })) {
        EXPECT_EQ(shown(name, Charset::unicode), unicode);
        EXPECT_EQ(shown(name, Charset::ascii), ascii);
    }
}

TEST(DisplayText, CountsTerminalColumns) {
    struct Case {
        std::string text;
        int columns;
    };

    for (const auto& [text, columns] : std::to_array<Case>({
             {"größe", 5},
             {"日本語", 6},
             {"e\u0301", 1},
             {"🔥", 2},
             {"ｆｕ", 4},
             {"█▏", 2},
         })) {
        EXPECT_EQ(columnsOf(text), columns) << text;
    }
}

TEST(DisplayText, CutsBetweenCharacters) {
    struct Case {
        std::string text;
        int columns;
        std::string fitted;
    };

    for (const auto& [text, columns, expected] : std::to_array<Case>({
             {"abcdef", 6, "abcdef"},
             {"abcdef", 5, "abcd…"},
             {"日本語", 5, "日本…"},
             {"日本語", 4, "日…"}, // half a character is none
             {"abc", 1, "…"},
             {"abc", -3, ""},
         })) {
        EXPECT_EQ(fitted(text, columns, Charset::unicode), expected) << text << " " << columns;
        EXPECT_LE(columnsOf(fitted(text, columns, Charset::unicode)), std::max(columns, 0));
    }
    EXPECT_EQ(fitted("abcdef", 5, Charset::ascii), "abcd~");
    EXPECT_EQ(paddedRight("日", 4) + "|" + paddedLeft("日", 4), "日  |  日");
}

TEST(DisplayText, WrapsBetweenWords) {
    EXPECT_EQ(wrapped("system bus not reachable", 12),
              (std::vector<std::string>{"system bus", "not", "reachable"}));
    EXPECT_EQ(wrapped("a /path/that/is/long is", 6),
              (std::vector<std::string>{"a", "/path/", "that/i", "s/long", "is"}));
    EXPECT_EQ(wrapped("日本", 0), (std::vector<std::string>{"日", "本"}));
}

TEST(StyledText, ColoursOnlyWhereThePaletteAllows) {
    const Line line{{"78 ", Tone::serious}, {"hot"}, {"   "}};
    EXPECT_EQ(encoded(line, {.columns = 80}), "78 hot");
    EXPECT_EQ(encoded(line, {.columns = 80, .palette = Palette::sixteen}), "\x1b[91m78 \x1b[0mhot");
    EXPECT_EQ(encoded(line, {.columns = 80, .palette = Palette::twoHundredFiftySix}),
              "\x1b[38;5;208m78 \x1b[0mhot");
    EXPECT_EQ(encoded(line, {.columns = 4}), "78 ~");
}

} // namespace
} // namespace cindertop::cli
