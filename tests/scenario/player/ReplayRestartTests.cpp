#include "Replays.h"

#include <nlohmann/json.hpp>

#include <cmath>
#include <cstdint>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace cindertop::replay {
namespace {

using Json = nlohmann::json;

/// A small machine whose every answer changes at random. Times are whole seconds, so that CPU times are whole
/// nanoseconds wherever a scenario begins.
class RandomMachine {
public:
    explicit RandomMachine(unsigned seed) : random_(seed) {}

    int below(int bound) { return std::uniform_int_distribution(0, bound - 1)(random_); }

    bool isHeads() { return below(2) == 0; }

    Json scenario(int duration) {
        auto frames = Json::array();
        for (int at = 0; at < duration; at += 1 + below(9)) {
            frames.push_back(frame(at));
        }
        return {{"schemaVersion", 1},
                {"start", "2026-01-01T00:00:00Z"},
                {"duration", duration},
                {"settings",
                 {{"experimentalTemperatureSensorsEnabled", isHeads()},
                  {"notificationsEnabled", true},
                  {"showContextInsights", isHeads()}}},
                {"frames", std::move(frames)},
                {"commands", Json::array()}};
    }

private:
    /// Every key, so that a scenario can begin with any frame.
    Json frame(int at) {
        auto displays = Json::array({{{"id", 1}, {"builtIn", isHeads()}}});
        if (isHeads()) {
            displays.push_back({{"id", 2}, {"builtIn", false}});
        }
        // Always the same: the CPU time of one that ends and comes back would tell how long the machine has
        // run.
        auto processes = Json::array();
        for (const char* const name : {"clang", "safari", "mds_stores", "steam", "notes"}) {
            processes.push_back({{"pid", 100 + static_cast<int>(processes.size())},
                                 {"longName", name},
                                 {"millicores", isHeads() ? below(1000) : 0}});
        }
        return {{"at", at},
                {"thermalState", below(5)},
                {"pressure", below(6)},
                {"sensors", Json::array({{{"product", "SOC Die"}, {"celsius", 60 + below(70)}}})},
                {"displays", below(5) > 0 ? displays : Json()},
                {"power",
                 {{"providing", isHeads() ? "AC Power" : "Battery Power"},
                  {"lowPowerMode", isHeads()},
                  {"entries", Json::array({{{"BatteryInstalled", true}, {"IsCharging", isHeads()}}})}}},
                {"load", {{"user", below(900)}, {"system", below(100)}, {"nice", 0}}},
                {"processes", std::move(processes)}};
    }

    std::mt19937 random_;
};

/// The scenario as a program meets it that starts at `instant`.
Json cutAt(int instant, Json scenario) {
    auto frames = Json::array();
    for (auto frame : scenario.at("frames")) {
        const int at = frame.at("at").get<int>() - instant;
        if (at <= 0) {
            frames.clear(); // replaced by this one
        }
        frame["at"] = std::max(at, 0);
        frames.push_back(std::move(frame));
    }
    scenario["frames"] = std::move(frames);
    scenario["duration"] = scenario.at("duration").get<int>() - instant;
    return scenario;
}

/// The ticks from `instant` on, told as if it were 0, without the instants within: those of the program's own
/// start stay its own.
std::vector<Json> ticksSince(int instant, const Json& scenario) {
    std::vector<Json> ticks;
    for (const auto& line : linesOf(scenario.dump())) {
        auto tick = Json::parse(line);
        if (tick.at("event") != "tick" || tick.at("t") < instant) {
            continue;
        }
        tick["t"] = std::llround((tick.at("t").get<double>() - instant) * 1e9);
        auto& offenders = tick.at("offenders");
        offenders.erase("measuredAt");
        for (auto& offender : offenders.at("offenders")) {
            for (auto& point : offender.at("history")) {
                point = point.at(1);
            }
        }
        ticks.push_back(std::move(tick));
    }
    return ticks;
}

TEST(ReplayRestart, AStopForgetsAllThatAFreshProgramDoesNotKnow) {
    for (unsigned seed = 1; seed <= 10; ++seed) {
        RandomMachine machine(seed);
        auto scenario = machine.scenario(240);
        const int pause = 60 + machine.below(80);
        const int resume = pause + machine.below(20); // at once, too
        scenario["commands"] =
            Json::array({{{"at", pause}, {"command", "pause"}}, {{"at", resume}, {"command", "resume"}}});
        const auto resumed = ticksSince(resume, scenario);
        scenario["commands"].clear();
        const auto fresh = ticksSince(0, cutAt(resume, scenario));

        ASSERT_GT(fresh.size(), 20U) << "seed " << seed;
        ASSERT_EQ(resumed.size(), fresh.size()) << "seed " << seed;
        for (std::size_t index = 0; index < fresh.size(); ++index) {
            ASSERT_EQ(resumed[index], fresh[index])
                << "seed " << seed << ", tick " << index << ": " << Json::diff(fresh[index], resumed[index]);
        }
    }
}

} // namespace
} // namespace cindertop::replay
