#include "agent/Arguments.h"

#include <gtest/gtest.h>

#include <vector>

namespace cindertop::agent {
namespace {

using Words = std::vector<std::string_view>;

TEST(Arguments, Understands) {
    struct Case {
        Words words;
        Arguments expected;
    };

    for (const auto& [words, expected] : std::vector<Case>{
             {{}, {}},
             {{"--headless"}, {.isHeadless = true}},
             {{"--accept-terms", "--headless"}, {.isHeadless = true, .acceptsTerms = true}},
             {{"--scenario", "a.json"}, {.scenario = "a.json"}},
             {{"--speed", "2.5", "--scenario", "-"}, {.scenario = "-", .speed = 2.5}},
             {{"--scenario", "a", "--scenario", "b", "--speed", "1e4"}, {.scenario = "b", .speed = 10'000}},
             {{"--scenario", "a", "--speed", "0.001"}, {.scenario = "a", .speed = 0.001}},
             {{"--headless", "-h"}, {.action = Action::help}},
             {{"--version", "--nonsense"}, {.action = Action::version}},
         }) {
        const auto arguments = parseArguments(words);
        ASSERT_TRUE(arguments) << arguments.error();
        EXPECT_EQ(*arguments, expected);
    }
}

TEST(Arguments, RefusesInOneSentence) {
    const std::string speed = "--speed needs a number from 0.001 to 10000, not ";
    for (const auto& [words, sentence] : std::vector<std::pair<Words, std::string>>{
             {{"--nonsense"}, "unknown argument \"--nonsense\""},
             {{""}, "unknown argument \"\""},
             {{"\x1b[31m"}, "unknown argument \"^[[31m\""},
             {{"--headless=yes"}, "unknown argument \"--headless=yes\""},
             {{"--scenario"}, "--scenario needs a value"},
             {{"--speed"}, "--speed needs a value"},
             {{"--speed", "2"}, "--speed needs a --scenario"},
             {{"--speed", "0"}, speed + "\"0\""},
             {{"--speed", "-1"}, speed + "\"-1\""},
             {{"--speed", "1e-300"}, speed + "\"1e-300\""},
             {{"--speed", "10001"}, speed + "\"10001\""},
             {{"--speed", "nan"}, speed + "\"nan\""},
             {{"--speed", "inf"}, speed + "\"inf\""},
             {{"--speed", "2,5"}, speed + "\"2,5\""},
             {{"--speed", "2x"}, speed + "\"2x\""},
             {{"--speed", ""}, speed + "\"\""},
         }) {
        const auto arguments = parseArguments(words);
        ASSERT_FALSE(arguments) << sentence;
        EXPECT_EQ(arguments.error(), sentence);
    }
}

} // namespace
} // namespace cindertop::agent
