#include "ScenarioTexts.h"
#include "scenario/format/JsonTree.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <variant>

namespace cindertop::simulated {
namespace {

using namespace std::chrono_literals;

std::string errorOf(const std::string& text) {
    const auto scenario = parseScenario(text);
    return scenario ? "" : scenario.error().message;
}

struct Refused {
    std::string text;
    std::string_view message; ///< its beginning
};

void expectRefused(const std::vector<Refused>& cases) {
    for (const auto& [text, message] : cases) {
        EXPECT_TRUE(errorOf(text).starts_with(message)) << text << "\nis " << errorOf(text);
    }
}

Refused frame(std::string_view keys, std::string_view message) {
    return {scenarioText(R"([{"at": 0}, {"at": 1, )" + std::string(keys) + "}]"), message};
}

Refused process(std::string_view keys, std::string_view message) {
    return frame(R"("processes": [{"pid": 1}, {)" + std::string(keys) + "}]", message);
}

Refused command(std::string_view commands, std::string_view message) {
    return {scenarioText(R"([{"at": 0}])", R"("commands": [)" + std::string(commands) + "], "), message};
}

Refused whole(std::string_view keys, std::string_view message) {
    return {scenarioText(R"([{"at": 0}])", std::string(keys) + ", "), message};
}

Refused beginning(std::string_view start, std::string_view duration, std::string_view message) {
    return {R"({"schemaVersion": 1, "start": ")" + std::string(start) + R"(", "duration": )" +
                std::string(duration) + R"(, "frames": [{"at": 0}]})",
            message};
}

TEST(ScenarioParser, NamesThePlaceWhereTheTextIsNoJson) {
    expectRefused({
        {"", "Line 1, column 1: "},
        {"{\n  \"name\": \"\xC3\xA9\xC3\xA9\", x}", "Line 2, column 17: "},
        {scenarioText(R"([{"at": 0}])") + " {}", "Line 1, column 94: "},
        {R"({"name": ")"
         "\xFF"
         R"("})",
         "Line 1, column 11: "},
        {R"({"frames": [{"at": 0}, {"power": {"entries": [{"a": 1, "b": 2, "a": 3}]}}]})",
         "frames[1].power.entries[0].a is given twice."},
        {R"({"name": "", "name": ""})", "name is given twice."},
        {std::string(100'000, '['), "[0][0][0][0][0][0][0][0][0][0][0][0][0][0][0][0] is nested too deeply."},
        {"[]", "A scenario must be an object."},
    });
}

TEST(ScenarioParser, NamesTheKeysOfWhatItRefuses) {
    expectRefused({
        {"{}", "schemaVersion is missing."},
        {R"({"schemaVersion": 2})", "schemaVersion must be 1."},
        {R"({"schemaVersion": 1, "duration": 1, "frames": []})", "start is missing."},
        beginning("2025-03-05T18:30:00Z", "1, \"frame\": []", "frame is not a known key."),
        whole(R"("odd \" key": 1)", R"(["odd \" key"] is not a known key.)"),
        whole(R"("name": null)", "name must be text."),
        whole(R"("system": "Linux")", "system must be one of mac, linux."),
        whole(R"("timeZone": "Mars/Olympus")", "timeZone is not a known time zone."),
        whole(R"("timeZone": "GMT+5")", "timeZone is not a known time zone."),
        whole(R"("locale": "en_")", "locale is not a name"),
        whole(R"("machine": {"processorCount": 0})", "machine.processorCount must be a whole number from 1"),
        whole(R"("machine": {"architecture": null})", "machine.architecture must be text."),
        whole(R"("ownProcessIdentifier": 2147483648)", "ownProcessIdentifier must be a whole number from -2"),
        whole(R"("termsAccepted": 1)", "termsAccepted must be true or false."),
        whole(R"("settings": {"showDockIcon": null})", "settings.showDockIcon must be true, false,"),
        whole(R"("settings": {"historyDurationMinutes": 1.5})", "settings.historyDurationMinutes must be a"),
        whole(R"("notifications": {"answer": "denied"})",
              "notifications.answer must be one of granted, refused, error."),
        whole(R"("bundles": {"/A.app": {"CFBundleName": 1}})",
              R"(bundles["/A.app"].CFBundleName must be te)"),
        {scenarioText("[]"), "frames must have a frame at 0."},
        {scenarioText(R"([{"at": 1e-9}])"), "frames[0] must be at 0, as the first one."},
        {scenarioText(R"([{"at": 0}, {"at": 0.0}])"), "frames[1] must be later than the frame before."},
        {scenarioText(R"([{"at": -1}])"), "frames[0].at must not be negative."},
        {scenarioText(R"([{}])"), "frames[0].at is missing."},
    });
}

TEST(ScenarioParser, ChecksFramesAndCommands) {
    expectRefused({
        frame(R"("thermalState": 1.0)", "frames[1].thermalState must be a whole number."),
        frame(R"("pressure": 18446744073709551616)",
              "frames[1].pressure must be a whole number from 0 to 18"),
        frame(R"("pressure": -1)", "frames[1].pressure must be a whole number from 0"),
        frame(R"("sensors": [{"product": "x"}])", "frames[1].sensors[0].celsius is missing."),
        frame(R"("sensors": [{"product": "x", "celsius": 1e308000}])", "Line "),
        frame(R"("displays": [{"id": -1, "builtIn": true}])",
              "frames[1].displays[0].id must be a whole numb"),
        frame(R"("meters": {"machineWatts": -1})", "frames[1].meters.machineWatts must not be negative."),
        frame(R"("meters": {"fans": [{"name": "Fan"}]})",
              "frames[1].meters.fans[0].revolutionsPerMinute is missing."),
        frame(R"("clocks": {"fastest": {"allowedHertz": 3, "possibleHertz": 2}})",
              "frames[1].clocks.fastest.allowedHertz must be a whole number from 0 to 2."),
        frame(R"("power": null)", "frames[1].power must be an object."),
        frame(R"("power": {"providing": null, "entries": []})", "frames[1].power.lowPowerMode is missing."),
        frame(R"("power": {"providing": null, "lowPowerMode": true, "entries": [{"T": 1.5}]})",
              "frames[1].power.entries[0].T must be a whole number."),
        frame(R"("load": {"user": 500, "system": 500, "nice": 1})",
              "frames[1].load is more than 1000 thousan"),
        frame(R"("load": {"user": 500, "system": 500})", "frames[1].load.nice is missing."),
        process(R"("path": "/x")", "frames[1].processes[1].pid is missing."),
        process(R"("pid": 1)", "frames[1].processes[1].pid is listed already."),
        process(R"("pid": 2, "longName": "123456789012345678901234567890é1")",
                "frames[1].processes[1].longName is longer than 32 bytes."),
        process(R"("pid": 2, "shortName": "12345678901234567")",
                "frames[1].processes[1].shortName is longer than 16 bytes."),
        process(R"("pid": 2, "millicores": -1)",
                "frames[1].processes[1].millicores must be a whole number f"),
        process(R"("pid": 2, "startedAt": 0.0000001)", "frames[1].processes[1].startedAt has more than 6 de"),
        process(R"("pid": 2, "startedAt": 8e9)", "frames[1].processes[1].startedAt is outside the years"),
        process(R"("pid": 2, "startedAt": 1e10)", "frames[1].processes[1].startedAt is too far from 0."),
        command(R"({"at": 0})", "commands[0].command is missing."),
        command(R"({"command": "pause"})", "commands[0].at is missing."),
        command(R"({"at": 0, "command": "stop"})", "commands[0].command is not a known command."),
        command(R"({"at": 0, "command": "pause", "value": 1})", "commands[0].value is not a known key."),
        command(R"({"at": 0, "command": "set", "value": 1})", "commands[0].setting is missing."),
        command(R"({"at": 0, "command": "set", "setting": "x", "value": []})",
                "commands[0].value must be tr"),
        command(R"({"at": 0.1234567891, "command": "pause"})", "commands[0].at has more than 9 decimals."),
        command(R"({"at": 1, "command": "pause"}, {"at": 0.9, "command": "resume"})",
                "commands[1] must not be earlier"),
    });
}

TEST(ScenarioParser, ReadsMomentsExactly) {
    struct Case {
        std::string_view start;
        Instant instant;
    };

    const Instant day = std::chrono::sys_days(std::chrono::year(2025) / 3 / 5);
    for (const auto& [start, instant] : std::to_array<Case>({
             {"2025-03-05T00:00:00Z", day},
             {"2025-03-05T18:30:01.25Z", day + 18h + 30min + 1250ms},
             {"2025-03-05T00:00:00.000001Z", day + 1us},
             {"1678-01-01T00:00:00Z", Instant(std::chrono::sys_days(std::chrono::year(1678) / 1 / 1))},
         })) {
        const auto scenario = parseScenario(beginning(start, "0.000000001", "").text);
        ASSERT_TRUE(scenario) << start;
        EXPECT_EQ(scenario->start, instant);
        EXPECT_EQ(scenario->duration, 1ns);
    }
    for (const auto* const start :
         {"2025-03-05T18:30:00", "2025-03-05 18:30:00Z", "2025-02-29T00:00:00Z", "2025-03-05T24:00:00Z",
          "2025-03-05T18:30:60Z", "2025-03-05T18:30:00.Z", "2025-03-05T18:30:00.1234567Z",
          "2025-03-05T18:30:00,5Z", "2025-03-05T18:30:00.+5Z", "1677-12-31T00:00:00Z",
          "2262-01-01T00:00:00Z"}) {
        expectRefused({beginning(start, "1", "start must be a moment")});
    }
    expectRefused({
        beginning("2025-03-05T00:00:00Z", "-1", "duration must not be negative."),
        beginning("2261-12-31T23:59:59Z", "1", "duration ends beyond the year 2261."),
        beginning("2025-03-05T00:00:00Z", "9223372036.854775807", "duration ends beyond the year 2261."),
        beginning("2025-03-05T00:00:00Z", "\"1\"", "duration must be a number of seconds."),
    });
}

TEST(DecimalNumber, IsExact) {
    struct Case {
        std::string_view number;
        std::int64_t nanoseconds;
    };

    for (const auto& [number, nanoseconds] : std::to_array<Case>({
             {"0", 0},
             {"-0.0e99999999999999999999", 0},
             {"0.3", 300'000'000},
             {"-1.5e-3", -1'500'000},
             {"12E+1", 120'000'000'000},
             {"1.0000000010000", 1'000'000'001},
             {"100000000000000000000e-20", 1'000'000'000},
             {"9007199254.740993", 9'007'199'254'740'993'000},
             {"9223372036.854775807", std::numeric_limits<std::int64_t>::max()},
             {"-9223372036.854775808", std::numeric_limits<std::int64_t>::min()},
         })) {
        EXPECT_EQ(scaledDecimal(number, 9), nanoseconds) << number;
    }
    for (const auto* const number : {"9223372036.854775808", "1e300", "1e99999999999999999999"}) {
        EXPECT_EQ(scaledDecimal(number, 9), std::unexpected(DecimalError::tooLarge)) << number;
    }
    for (const auto* const number : {"0.0000000001", "1e-10", "1.00000000005", "1e-99999999999999999999"}) {
        EXPECT_EQ(scaledDecimal(number, 9), std::unexpected(DecimalError::tooPrecise)) << number;
    }
}

TEST(ScenarioParser, CompletesEachFrameByTheOneBefore) {
    const auto scenario = scenarioOf(R"([
        {"at": 0, "thermalState": 7, "pressure": 18446744073709551615,
         "sensors": [{"product": null, "celsius": -3}, {"product": "é", "celsius": null}],
         "power": {"providing": null, "lowPowerMode": true, "entries": [{"B": true, "C": -5, "D": "x"}]}},
        {"at": 0.1, "pressure": null, "load": null, "displays": null},
        {"at": 0.2, "thermalState": -99999999999, "sensors": null, "load": {"user": 1, "system": 2, "nice": 3},
         "processes": null}
    ])");
    ASSERT_EQ(scenario->frames.size(), 3U);
    const auto& [first, second, third] =
        std::tie(scenario->frames[0], scenario->frames[1], scenario->frames[2]);

    EXPECT_EQ(first.thermalState, 7);
    EXPECT_EQ(second.thermalState, 7);
    EXPECT_GT(third.thermalState, 3); // none of the known ones
    EXPECT_EQ(first.pressure, std::numeric_limits<std::uint64_t>::max());
    EXPECT_FALSE(second.pressure || third.pressure);
    EXPECT_EQ(second.sensors, first.sensors);
    EXPECT_EQ(first.sensors->at(0).celsius, -3);
    EXPECT_EQ(first.sensors->at(1).product, "é");
    EXPECT_FALSE(third.sensors);
    EXPECT_TRUE(first.displays->at(0).isBuiltIn);
    EXPECT_FALSE(second.displays || third.displays);
    EXPECT_EQ(third.power, first.power);
    EXPECT_EQ(first.power->entries->at(0).at("B"), PropertyValue(true));
    EXPECT_EQ(first.power->entries->at(0).at("C"), PropertyValue(std::int64_t{-5}));
    EXPECT_TRUE(first.load);
    EXPECT_FALSE(second.load);
    EXPECT_EQ(third.load->nice, 3U);
    EXPECT_TRUE(second.processes);
    EXPECT_FALSE(third.processes);
    EXPECT_EQ(third.at, 200ms);
}

TEST(ScenarioParser, KeepsPreferencesAndCommandsInTheirOrder) {
    const auto scenario = scenarioOf(R"([{"at": 0}])", R"(
        "settings": {"showDockIcon": true, "historyDurationMinutes": -99999999999999999999},
        "commands": [
            {"at": 1, "command": "set", "setting": "menuBarInfoMode", "value": "gone"},
            {"at": 1, "command": "refreshOffenders", "pinned": "com.a"},
            {"at": 2, "command": "refreshOffenders"}, {"at": 99, "command": "resetSettings"}], )");
    EXPECT_EQ(scenario->settings.at(0).path, "settings.showDockIcon");
    EXPECT_EQ(std::get<std::int64_t>(scenario->settings.at(1).value),
              std::numeric_limits<std::int64_t>::min());
    ASSERT_EQ(scenario->commands.size(), 4U);
    const auto& set = std::get<SetCommand>(scenario->commands[0].action).setting;
    EXPECT_EQ(set.name, "menuBarInfoMode");
    EXPECT_EQ(std::get<std::string>(set.value), "gone");
    EXPECT_EQ(set.path, "commands[0].value");
    EXPECT_EQ(std::get<RefreshOffendersCommand>(scenario->commands[1].action).pinned, "com.a");
    EXPECT_FALSE(std::get<RefreshOffendersCommand>(scenario->commands[2].action).pinned);
    EXPECT_TRUE(std::holds_alternative<ResetSettingsCommand>(scenario->commands[3].action));
    EXPECT_EQ(scenario->commands[3].at, 99s);
}

} // namespace
} // namespace cindertop::simulated
