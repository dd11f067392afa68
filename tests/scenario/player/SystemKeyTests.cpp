#include "Replays.h"

#include <nlohmann/json.hpp>

#include <string>
#include <vector>

namespace cindertop::replay {
namespace {

using nlohmann::json;
using std::string_literals::operator""s;

/// A laptop that gets critically hot over a compiler and an indexer, for two minutes.
std::string episode(const std::string& keys) {
    return R"({"schemaVersion": 1, "start": "2026-07-14T12:30:00Z", "duration": 120, )" + keys +
           R"("frames": [
               {"at": 0, "thermalState": 0, "sensors": [{"product": "CPU Package 0", "celsius": 61}],
                "processes": [{"pid": 7, "longName": "cc1plus", "millicores": 4000},
                              {"pid": 8, "longName": "baloo_file", "millicores": 900},
                              {"pid": 9, "longName": "mds", "millicores": 800}]},
               {"at": 40, "thermalState": 3, "pressure": 3}],
            "commands": [{"at": 110, "command": "resetSettings"}]})";
}

std::vector<json> linesOfEpisode(const std::string& keys) {
    std::vector<json> lines;
    for (const auto& line : linesOf(episode(keys))) {
        lines.push_back(json::parse(line));
    }
    return lines;
}

/// The settings of a Mac's user who chose what is the default on Linux.
constexpr auto likeLinux =
    R"("settings": {"experimentalTemperatureSensorsEnabled": true, "menuBarInfoMode": "temperature",
        "notificationsEnabled": true}, )";

/// Without what texts and names of processes decide.
json stripped(json line) {
    for (const auto* const key : {"recommendation", "presentation", "offenders", "title", "body", "sample",
                                  "todaySummary", "notificationState"}) {
        line.erase(key);
    }
    return line;
}

TEST(HardwareKeys, StandInTheContextOfTheLinesThatHaveThem) {
    const auto lines =
        linesOf(R"({"schemaVersion": 1, "start": "2026-07-14T12:30:00Z", "duration": 3, "frames": [
        {"at": 0},
        {"at": 2, "meters": {"fans": [{"name": "Fan", "revolutionsPerMinute": 2450}]},
         "power": {"providing": null, "lowPowerMode": true,
                   "entries": [{"BatteryInstalled": true, "ChargeRateMilliwatts": 23000}]},
         "clocks": {"fastest": {"allowedHertz": 1200000000, "possibleHertz": 3400000000}}}]})");
    std::vector<json> contexts;
    for (const auto& line : lines) {
        if (const auto tick = json::parse(line); tick.at("event") == "tick") {
            contexts.push_back(tick.at("context"));
        }
    }
    ASSERT_EQ(contexts.size(), 2U);
    EXPECT_FALSE(contexts[0].contains("hardware") || contexts[0].at("power").contains("batteryWatts"));
    EXPECT_EQ(contexts[1].at("power").at("batteryWatts"), 23);
    EXPECT_EQ(contexts[1].at("hardware"), json::parse(R"({
        "meters": {"machineWatts": null, "chips": [], "fans": [{"name": "Fan", "revolutionsPerMinute": 2450}]},
        "processor": {"clock": {"allowedHertz": 1200000000, "possibleHertz": 3400000000},
                      "isOfSomeCores": false, "heldBy": "powerSaver"}})"));
}

TEST(SystemKey, ChangesNothingWhenItSaysMac) {
    EXPECT_EQ(linesOf(episode("")), linesOf(episode(R"("system": "mac", )")));
}

TEST(SystemKey, ChangesTextsNamesAndDefaultsOnly) {
    const auto onLinux = linesOfEpisode(R"("system": "linux", )");
    const auto onMac = linesOfEpisode(likeLinux);
    std::size_t ticks = 0;
    for (std::size_t index = 0; index < onLinux.size(); ++index) {
        if (onLinux[index]["t"] >= 110) {
            break; // the reset gives each its own defaults
        }
        ASSERT_LT(index, onMac.size());
        ASSERT_EQ(stripped(onLinux[index]), stripped(onMac[index])) << index;
        ticks += onLinux[index]["event"] == "tick" ? 1U : 0U;
    }
    EXPECT_GT(ticks, 20U);
}

/// The last tick before the reset.
json hotTick(const std::vector<json>& lines) {
    json found;
    for (const auto& line : lines) {
        if (line["event"] == "tick" && line["t"] < 110) {
            found = line;
        }
    }
    return found;
}

TEST(SystemKey, DecidesWhatIsNotChosen) {
    std::string title;
    for (const auto& line : linesOfEpisode(R"("system": "linux", )")) {
        title = line["event"] == "notification" ? line["title"].get<std::string>() : title;
    }
    EXPECT_EQ(title, "Critical Thermal Pressure");
    for (const auto& keys : {std::string(), R"("system": "linux", "settings": {"notificationsEnabled": false,
                                                "experimentalTemperatureSensorsEnabled": false}, )"s}) {
        for (const auto& line : linesOfEpisode(keys)) {
            if (line["t"] < 110) {
                EXPECT_NE(line["event"], "notification") << keys;
                EXPECT_TRUE(line["event"] != "tick" || line["score"]["temperatureCelsius"].is_null());
            }
        }
    }
    const auto last = hotTick(linesOfEpisode(R"("system": "linux", )"));
    EXPECT_EQ(last["score"]["temperatureCelsius"], 61);
}

} // namespace
} // namespace cindertop::replay
