#include "ReplayDigest.h"
#include "Replays.h"
#include "scenario/player/ScenarioFile.h"
#include "support/FileSystem.h"

#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace cindertop::replay {
namespace {

const std::filesystem::path scenarios = CINDERTOP_SCENARIOS;

std::vector<std::string> digestOf(const std::string& name) {
    PosixFileSystem files;
    const auto scenario = loadScenario(files, scenarios / (name + ".json"));
    if (!scenario) {
        ADD_FAILURE() << scenario.error();
        return {};
    }
    simulated::MemoryFileSystem memory;
    ReplayDigest digest;
    replay(*scenario, (*scenario)->duration, {.files = memory, .folder = "/replay"},
           [&digest](const std::string& line) { digest.add(line); });
    return std::move(digest).lines();
}

std::vector<std::string> linesIn(const std::filesystem::path& file) {
    std::ifstream stream(file);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

void write(const std::filesystem::path& file, const std::vector<std::string>& lines) {
    std::ofstream stream(file);
    for (const auto& line : lines) {
        stream << line << '\n';
    }
    EXPECT_TRUE(stream.flush()) << file;
}

/// Only where they part: everything behind it follows from that, the checksum in the last line included.
void expectSameLines(const std::vector<std::string>& expected, const std::vector<std::string>& actual) {
    const auto at = [](const std::vector<std::string>& lines, std::size_t index) {
        return index < lines.size() ? lines[index] : std::string("(nothing more)");
    };
    for (std::size_t index = 0; index < expected.size() || index < actual.size(); ++index) {
        const auto wanted = at(expected, index);
        const auto found = at(actual, index);
        if (wanted == found) {
            continue;
        }
        const bool isChecksum = index + 1 == expected.size() && index + 1 == actual.size();
        ADD_FAILURE() << "line " << index + 1 << "\n  expected " << wanted << "\n  found    " << found
                      << (isChecksum ? "\nwhat the digest shows is the same, something else is not" : "");
        return;
    }
}

class ScenarioReplay : public testing::TestWithParam<std::string> {};

TEST_P(ScenarioReplay, TellsTheExpectedLines) {
    const auto file = scenarios / "expected" / (GetParam() + ".lines");
    const auto actual = digestOf(GetParam());
    if (std::getenv("CINDERTOP_UPDATE_EXPECTED") != nullptr) {
        write(file, actual);
    }
    expectSameLines(linesIn(file), actual);
}

INSTANTIATE_TEST_SUITE_P(All, ScenarioReplay,
                         testing::Values("hot-afternoon", "clamshell", "no-sensors", "flapping", "every-name",
                                         "warm-train", "drawing"),
                         [](const auto& scenario) {
                             auto name = scenario.param;
                             std::erase(name, '-');
                             return name;
                         });

TEST(Replay, EndsEarlyOrWithTheScenario) {
    const auto parsed = simulated::parseScenario(
        R"({"schemaVersion": 1, "start": "2026-01-01T00:00:00Z", "duration": 9, "frames": [{"at": 0}]})");
    ASSERT_TRUE(parsed) << parsed.error().message;
    const auto scenario = std::make_shared<const simulated::Scenario>(*parsed);
    const auto lastLine = [&scenario](std::chrono::seconds duration) {
        simulated::MemoryFileSystem files;
        std::string last;
        replay(scenario, duration, {.files = files, .folder = "/replay"},
               [&last](std::string line) { last = std::move(line); });
        return last;
    };
    using std::chrono::seconds;
    EXPECT_EQ(lastLine(seconds(4)),
              R"({"t":4.0,"event":"end","ticks":2,"historySamples":1,"notifications":0})");
    EXPECT_EQ(lastLine(seconds(100)),
              R"({"t":9.0,"event":"end","ticks":5,"historySamples":2,"notifications":0})");
}

TEST(Replay, NamesTheStateOfNotifications) {
    struct Case {
        std::string authorization, answer, state;
    };

    for (const auto& [authorization, answer, state] : {
             Case{"provisional", "refused", "authorized"},
             Case{"denied", "granted", "denied"},
             Case{"notDetermined", "refused", "denied"},
             Case{"notDetermined", "error", "unavailable"},
             Case{"unknown", "granted", "unavailable"},
         }) {
        std::string scenario = R"({"schemaVersion": 1, "start": "2026-01-01T00:00:00Z", "duration": 1,
            "settings": {"notificationsEnabled": true}, "frames": [{"at": 0}], "notifications": {"authorization": ")";
        scenario.append(authorization).append(R"(", "answer": ")").append(answer).append("\"}}");
        const auto lines = linesOf(scenario);
        ASSERT_GT(lines.size(), 1U);
        EXPECT_TRUE(lines.at(lines.size() - 2).ends_with("\"notificationState\":\"" + state + "\"}"))
            << authorization << ' ' << answer;
    }
}

TEST(Replay, NamesThePlaceOfAPreferenceThatDoesNotExist) {
    simulated::MemoryFileSystem files;
    const auto file = files.openForReplacing("/broken.json");
    ASSERT_TRUE(file);
    ASSERT_TRUE(files.write(*file, R"({"schemaVersion": 1, "start": "2026-01-01T00:00:00Z", "duration": 9,
        "frames": [{"at": 0}], "commands": [{"at": 1, "command": "set", "setting": "mood", "value": true}]})"));
    files.close(*file);
    const auto scenario = loadScenario(files, "/broken.json");
    ASSERT_FALSE(scenario);
    EXPECT_TRUE(scenario.error().starts_with("/broken.json: commands[0]")) << scenario.error();
    EXPECT_TRUE(scenario.error().contains("\"mood\"")) << scenario.error();
}

} // namespace
} // namespace cindertop::replay
