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
             {{"history", "--json"}, {Command::history, Format::json}},
             {{"export", "-"}, {Command::exportDiagnostics, Format::text, {"-"}}},
             {{"settings"}, {Command::settings}},
             {{"settings", "historyEnabled", "off"},
              {Command::settings, Format::text, {"historyEnabled", "off"}}},
             {{"settings", "historyDurationMinutes", "--json"},
              {Command::settings, Format::json, {"historyDurationMinutes"}}},
             {{"settings", "historyDurationMinutes", "-5"},
              {Command::settings, Format::text, {"historyDurationMinutes", "-5"}}},
             {{"export", "--", "--json"}, {Command::exportDiagnostics, Format::text, {"--json"}}},
             {{"--", "settings", "a", "--"}, {Command::settings, Format::text, {"a", "--"}}},
             {{"accept-terms"}, {Command::acceptTerms}},
             {{"--until", "1.5", "replay", "a", "--state-dir", "d"},
              {Command::replay, Format::text, {"a"}, 1.5, "d"}},
             {{"record", "a", "--seconds", "90"}, {Command::record, Format::text, {"a"}, 90.0}},
             {{"watch", "--interval", "0.5", "--sort", "name"},
              {.command = Command::watch, .interval = 0.5, .order = OffenderOrder::name}},
             {{"watch", "--sort", "cpu"}, {Command::watch}},
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
             {{"sattus"}, "unknown command \"sattus\""},
             {{"status", "watch"}, "unexpected argument \"watch\""},
             {{"export"}, "\"export\" needs a file to write"},
             {{"export", ""}, "\"export\" needs a file to write"},
             {{"export", "a", "b"}, "unexpected argument \"b\""},
             {{"--json", "export", "a"}, "\"export\" takes no --json"},
             {{"settings", "a", "b", "c"}, "unexpected argument \"c\""},
             {{"record", "a", "--seconds"}, "--seconds needs a value"},
             {{"metrics", "--textfile", ""}, "--textfile needs a folder, not \"\""},
             {{"watch", "--json", "--format", "waybar"}, "--json and --format exclude each other"},
             {{"watch", "--sort", "name", "--json"}, "--json and --sort exclude each other"},
             {{"watch", "--sort", "heat"}, "--sort needs cpu, graphics or name, not \"heat\""},
             {{"watch", "--interval", "0.1"},
              "--interval needs a number of seconds, at least 0.2, not \"0.1\""},
             {{"status", "--interval", "1"}, "\"status\" takes no --interval"},
             {{"record", "a", "--seconds", "0"}, "--seconds needs a number of seconds above 0, not \"0\""},
             {{"replay", "a", "--until", "1s"}, "--until needs a number of seconds above 0, not \"1s\""},
             {{"replay", "a", "--seconds", "1"}, "\"replay\" takes no --seconds"},
             {{"pause", "--state-dir", "d"}, "\"pause\" takes no --state-dir"},
             {{"status", "--jsno"}, "unknown option \"--jsno\""},
             {{"-x", "--help"}, "unknown option \"-x\""},
             {{"status", "-5"}, "unexpected argument \"-5\""},
             {{"--", "--help"}, "unknown command \"--help\""},
             {{"a\x1b[2J\n"}, "unknown command \"a^[[2J^J\""},
         })) {
        EXPECT_EQ(parseArguments(words), std::unexpected(message));
    }
}

TEST(HelpText, FitsATerminalOfEightyColumns) {
    const auto text = helpText(programTable());
    std::size_t start = 0;
    while (start < text.size()) {
        const auto end = text.find('\n', start);
        EXPECT_LE(end - start, 80U) << text.substr(start, end - start);
        start = end + 1;
    }
}

} // namespace
} // namespace cindertop::cli
