#include "cli/Arguments.h"
#include "cli/HelpText.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace cindertop::cli {
namespace {

using Words = std::vector<std::string_view>;

TEST(Arguments, AreUnderstood) {
    struct Case {
        Words words;
        Arguments expected;
    };

    for (const auto& [words, expected] : std::to_array<Case>({
             {{"status"}, {Command::status}},
             {{"status", "--json"}, {Command::status, Format::json}},
             {{"--json", "watch"}, {Command::watch, Format::json}},
             {{"offenders"}, {Command::offenders}},
             {{"--help"}, {Command::help}},
             {{"-h"}, {Command::help}},
             {{"watch", "--help"}, {Command::help}},
             {{"--version", "nonsense"}, {Command::version}},
             {{"-V"}, {Command::version}},
         })) {
        EXPECT_EQ(parseArguments(words), expected) << words.front();
    }
}

TEST(Arguments, AreRefusedWithTheWordInQuestion) {
    struct Case {
        Words words;
        std::string message;
    };

    for (const auto& [words, message] : std::to_array<Case>({
             {{}, "no command given"},
             {{"--json"}, "no command given"},
             {{"sattus"}, "unknown command \"sattus\""},
             {{""}, "unknown command \"\""},
             {{"status", "watch"}, "unexpected argument \"watch\""},
             {{"status", "--jsno"}, "unknown option \"--jsno\""},
             {{"-x", "--help"}, "unknown option \"-x\""},
             {{"a\x1b[2J\n"}, "unknown command \"a^[[2J^J\""},
         })) {
        EXPECT_EQ(parseArguments(words), std::unexpected(message));
    }
}

TEST(HelpText, FitsATerminalOfEightyColumns) {
    const auto text = helpText();
    std::size_t start = 0;
    while (start < text.size()) {
        const auto end = text.find('\n', start);
        EXPECT_LE(end - start, 80U) << text.substr(start, end - start);
        start = end + 1;
    }
}

} // namespace
} // namespace cindertop::cli
