#include "Replays.h"

#include <nlohmann/json.hpp>

#include <string>
#include <string_view>

namespace cindertop::replay {
namespace {

/// "0 2 4*" for ticks at 0, 2 and 4, the starred one above the normal level.
std::string ticksIn(const std::vector<std::string>& lines) {
    std::string ticks;
    for (const auto& line : lines) {
        const auto json = nlohmann::json::parse(line);
        if (json.at("event") != "tick") {
            continue;
        }
        ticks += (ticks.empty() ? "" : " ") + std::to_string(json.at("t").get<int>()) +
                 (json.at("score").at("level") == "normal" ? "" : "*");
    }
    return ticks;
}

/// Eight seconds of a cool machine: a tick every two seconds.
std::string scenario(std::string_view commands, std::string_view laterFrames = "",
                     std::string_view termsAccepted = "true") {
    return R"({"schemaVersion": 1, "start": "2026-01-01T00:00:00Z", "duration": 8, "termsAccepted": )" +
           std::string(termsAccepted) + R"(, "frames": [{"at": 0})" + std::string(laterFrames) +
           R"(], "commands": [)" + std::string(commands) + "]}";
}

TEST(ReplayOrder, DecidesWhichTicksRun) {
    struct Case {
        std::string_view what;
        std::string scenario;
        std::string_view ticks;
    };

    constexpr std::string_view pauseAndResume =
        R"({"at": 4, "command": "pause"}, {"at": 4, "command": "resume"})";
    constexpr std::string_view resumeAndPause =
        R"({"at": 4, "command": "resume"}, {"at": 4, "command": "pause"})";
    constexpr std::string_view restart =
        R"({"at": 4, "command": "set", "setting": "experimentalTemperatureSensorsEnabled", "value": false})";
    for (const auto& [what, text, ticks] : {
             Case{"nothing at the end", scenario(""), "0 2 4 6"},
             Case{"pause at a tick", scenario(R"({"at": 4, "command": "pause"})"), "0 2"},
             Case{"stop and start at a tick", scenario(pauseAndResume), "0 2 4 6"},
             Case{"a restart by a setting", scenario(restart), "0 2 4 6"},
             Case{"start and stop at a tick", scenario(resumeAndPause), "0 2"},
             Case{"a start between ticks",
                  scenario(R"({"at": 3, "command": "pause"}, {"at": 3, "command": "resume"})"), "0 2 3 5 7"},
             Case{"a rest", scenario(R"({"at": 3, "command": "pause"}, {"at": 5, "command": "resume"})"),
                  "0 2 5 7"},
             Case{"pause at 0", scenario(R"({"at": 0, "command": "pause"})"), ""},
             Case{"no terms", scenario("", "", "false"), ""},
             Case{"terms at 0", scenario(R"({"at": 0, "command": "acceptTerms"})", "", "false"), "0 2 4 6"},
             Case{"terms later, resume before them",
                  scenario(R"({"at": 1, "command": "resume"}, {"at": 3, "command": "acceptTerms"})", "",
                           "false"),
                  "3 5 7"},
             Case{"a command at the end", scenario(R"({"at": 8, "command": "resetSettings"})"), "0 2 4 6"},
             Case{"the frame of a tick's instant", scenario("", R"(, {"at": 4, "pressure": 1})"),
                  "0 2 4* 5* 6* 7*"},
             Case{"frames between ticks",
                  scenario("", R"(, {"at": 3, "pressure": 1}, {"at": 3.5, "pressure": 0})"), "0 2 4 6"},
         }) {
        EXPECT_EQ(ticksIn(linesOf(text)), ticks) << what;
    }
}

/// What happened at one instant, line by line.
std::string eventsAt(double instant, const std::vector<std::string>& lines) {
    std::string events;
    for (const auto& line : lines) {
        const auto json = nlohmann::json::parse(line);
        if (json.at("t") == instant) {
            const auto message = json.contains("message") ? json.at("message").get<std::string>() : "";
            events += json.at("event").get<std::string>() + (message.empty() ? "" : ' ' + message) + '\n';
        }
    }
    return events;
}

TEST(ReplayOrder, TellsTheLinesOfAnInstantAsTheyHappen) {
    const auto start =
        scenario(R"({"at": 0, "command": "set", "setting": "notificationsEnabled", "value": true},
                                   {"at": 6, "command": "pause"}, {"at": 6, "command": "resume"},
                                   {"at": 8, "command": "pause"})",
                 R"(, {"at": 4, "pressure": 3})");
    const auto lines = linesOf(start);
    EXPECT_EQ(eventsAt(0, lines), "log Diagnostic logs enabled\n"
                                  "log App state initialized\n"
                                  "log Thermal monitoring started\n"
                                  "unifiedLog Darwin thermal pressure raw state: 0 -> nominal\n"
                                  "history\n"
                                  "log Thermal level changed\n"
                                  "tick\n");
    EXPECT_EQ(eventsAt(4, lines), "unifiedLog Darwin thermal pressure raw state: 3 -> critical\n"
                                  "history\n"
                                  "notification\n"
                                  "log Thermal notification delivered\n"
                                  "log Thermal level changed\n"
                                  "tick\n");
    EXPECT_EQ(eventsAt(6, lines), "log Thermal monitoring stopped\n"
                                  "log Monitoring paused by user\n"
                                  "log Thermal monitoring started\n"
                                  "log Monitoring resumed by user\n"
                                  "history\n"
                                  "notification\n" // the cooldowns start over with each start
                                  "log Thermal notification delivered\n"
                                  "log Thermal level changed\n"
                                  "tick\n");
    EXPECT_EQ(eventsAt(8, lines), "end\n");
}

} // namespace
} // namespace cindertop::replay
