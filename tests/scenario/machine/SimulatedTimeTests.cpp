#include "ScenarioTexts.h"
#include "fakes/FakeClock.h"
#include "scenario/machine/SimulatedMachine.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>

namespace cindertop::simulated {
namespace {

using namespace std::chrono_literals;

/// A scenario that is read at any moment of it.
class Play {
public:
    explicit Play(std::shared_ptr<const Scenario> scenario)
        : scenario_(std::move(scenario)), machine_(scenario_, clock_) {}

    Machine at(std::chrono::nanoseconds elapsed) {
        clock_.time = scenario_->start + elapsed;
        return machine_.services();
    }

    std::optional<std::uint64_t> cpuTime(std::int32_t processIdentifier, std::chrono::nanoseconds elapsed) {
        const auto accounting = at(elapsed).processes.accounting(processIdentifier);
        return accounting.transform([](const auto& known) { return known.totalUserTime; });
    }

private:
    std::shared_ptr<const Scenario> scenario_;
    fakes::FakeClock clock_;
    SimulatedMachine machine_;
};

TEST(SimulatedTime, AddsCpuTimeWithoutRoundingUntilItIsRead) {
    // A third of a nanosecond more or less a frame would show after so many.
    std::string frames = R"([{"at": 0, "processes": [{"pid": 7, "millicores": 1, "cpuTimeNanoseconds": 5}]})";
    for (int frame = 1; frame <= 2000; ++frame) {
        frames += R"(, {"at": )" + std::to_string(frame * 333) +
                  R"(e-9, "processes": [{"pid": 7, "millicores": )" + std::to_string(1 + frame % 2) + "}]}";
    }
    Play play(scenarioOf(frames + "]"));
    EXPECT_EQ(play.cpuTime(7, 0ns), 5U);
    EXPECT_EQ(play.cpuTime(7, 332ns), 5U);
    EXPECT_EQ(play.cpuTime(7, 333ns + 333ns), 5U);                    // 333 + 666 thousandths
    EXPECT_EQ(play.cpuTime(7, 333ns + 333ns + 1ns), 6U);              // and one more
    EXPECT_EQ(play.cpuTime(7, 2000 * 333ns), 5U + 999U);              // 1000 × 333 × (1 + 2) thousandths
    EXPECT_EQ(play.cpuTime(7, 2000 * 333ns + 10s), 5U + 10'000'999U); // the last frame goes on
    EXPECT_EQ(play.cpuTime(7, -1h), 5U);                              // before the start
}

TEST(SimulatedTime, CountsTicksOfTheWholeMachine) {
    Play play(scenarioOf(R"([{"at": 0, "load": {"user": 333, "system": 1, "nice": 0}},
                             {"at": 0.123456789, "load": null},
                             {"at": 1, "load": {"user": 0, "system": 0, "nice": 1000}}])",
                         R"("machine": {"processorCount": 3}, )"));
    const auto ticks = [&](std::chrono::nanoseconds elapsed) {
        return play.at(elapsed).hostStatistics.cpuLoad();
    };
    EXPECT_EQ(ticks(0ns), (HostCpuLoad{.user = 0, .system = 0, .idle = 0, .nice = 0}));
    EXPECT_EQ(ticks(30'030'030ns)->user, 2U); // just short of 3
    EXPECT_EQ(ticks(30'030'031ns)->user, 3U);
    EXPECT_EQ(ticks(500ms), std::nullopt);
    // User: 0.333 × 0.123456789 s × 300; idle: 0.666 of it and all the time that was refused.
    EXPECT_EQ(ticks(1s), (HostCpuLoad{.user = 12, .system = 0, .idle = 287, .nice = 0}));
    EXPECT_EQ(ticks(3s), (HostCpuLoad{.user = 12, .system = 0, .idle = 287, .nice = 600}));
}

TEST(SimulatedTime, DoesNotWrap) {
    Play play(parsed(R"({"schemaVersion": 1, "start": "1970-01-01T00:00:00Z", "duration": 9e9,
        "machine": {"processorCount": 2147483647},
        "frames": [{"at": 0, "load": {"user": 1000, "system": 0, "nice": 0}, "processes":
            [{"pid": 1, "millicores": 1000000000, "cpuTimeNanoseconds": 18446744073709551615}]}]})"));
    constexpr auto largest = std::numeric_limits<std::uint64_t>::max();
    EXPECT_EQ(play.cpuTime(1, 9'000'000'000s), largest);
    EXPECT_EQ(play.at(9'000'000'000s).hostStatistics.cpuLoad()->user, largest);
}

TEST(SimulatedTime, StartsAnewWhenAProcessIsAnotherOne) {
    Play play(scenarioOf(R"([
        {"at": 0, "processes": [{"pid": 5, "startedAt": -1, "millicores": 1000, "cpuTimeNanoseconds": 9}]},
        {"at": 1, "processes": [{"pid": 6}, {"pid": 5, "startedAt": -1, "millicores": 500,
                                             "cpuTimeNanoseconds": 77}]},
        {"at": 2, "processes": [{"pid": 5, "startedAt": 1.5, "cpuTimeNanoseconds": 3}]},
        {"at": 3, "thermalState": 1},
        {"at": 4, "processes": null},
        {"at": 5, "processes": [{"pid": 5, "startedAt": 1.5, "cpuTimeNanoseconds": 4}]}
    ])"));
    EXPECT_EQ(play.cpuTime(5, 1s), 1'000'000'009U);
    EXPECT_EQ(play.cpuTime(5, 1999ms), 1'499'500'009U);
    EXPECT_EQ(play.cpuTime(5, 2s), 3U);
    EXPECT_EQ(play.cpuTime(5, 3s), 3U);
    EXPECT_EQ(play.cpuTime(5, 4s), std::nullopt);
    EXPECT_EQ(play.cpuTime(5, 5s), 4U);
    EXPECT_EQ(play.cpuTime(6, 2s), std::nullopt);
}

TEST(SimulatedTime, StampsAProcessByEverythingButItsTime) {
    Play play(scenarioOf(R"([
        {"at": 0, "processes": [{"pid": 5, "startedAt": 0, "millicores": 1}, {"pid": 6, "longName": "a"}]},
        {"at": 1, "processes": [{"pid": 5, "startedAt": 0, "millicores": 2}, {"pid": 6, "longName": "b"}]}
    ])"));
    const auto stamp = [&](std::int32_t processIdentifier, std::chrono::nanoseconds elapsed) {
        return play.at(elapsed).processes.accounting(processIdentifier)->identityStamp;
    };
    EXPECT_EQ(stamp(5, 0s), stamp(5, 1s));
    EXPECT_NE(stamp(6, 0s), stamp(6, 1s));
    EXPECT_NE(stamp(5, 0s), 0U);
}

TEST(SimulatedTime, GivesTheStartAsTheAccountingHasIt) {
    struct Case {
        std::string_view startedAt;
        std::uint64_t seconds;
        std::uint64_t microseconds;
    };

    for (const auto& [startedAt, seconds, microseconds] : std::to_array<Case>({
             {"null", 0, 0},
             {"-0.000001", 100, 249'999},
             {"1.75", 102, 0},
             {"-100.25", 0, 0},
             {"-101", 0, 0},
         })) {
        Play play(parsed(R"({"schemaVersion": 1, "start": "1970-01-01T00:01:40.25Z", "duration": 1,
            "frames": [{"at": 0, "processes": [{"pid": 1, "startedAt": )" +
                         std::string(startedAt) + "}]}]}"));
        const auto accounting = play.at(0s).processes.accounting(1);
        EXPECT_EQ(accounting->startSeconds, seconds) << startedAt;
        EXPECT_EQ(accounting->startMicroseconds, microseconds) << startedAt;
    }
}

} // namespace
} // namespace cindertop::simulated
