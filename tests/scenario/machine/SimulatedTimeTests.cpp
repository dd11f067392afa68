#include "ScenarioTexts.h"
#include "fakes/FakeClock.h"
#include "scenario/machine/SimulatedMachine.h"
#include "scenario/machine/VirtualClock.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <string>
#include <utility>
#include <vector>

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

TEST(SimulatedTime, AddsGraphicsTimeOfEachEngine) {
    Play play(scenarioOf(R"([
        {"at": 0, "processes": [{"pid": 7, "graphics": {"render": 500, "video": 1000}}, {"pid": 8}]},
        {"at": 1, "processes": [{"pid": 7, "parent": 2, "graphics": {"render": 1}}, {"pid": 8, "graphics": {"render": 9}}]},
        {"at": 2, "processes": [{"pid": 8}]},
        {"at": 3, "processes": [{"pid": 7, "graphics": {"render": 100}}]},
        {"at": 4, "processes": null}])"));
    const auto clients = [&](std::chrono::nanoseconds elapsed) {
        std::string text;
        std::uint64_t identifier = 0;
        for (const auto& client : play.at(elapsed).graphics->clients()) {
            EXPECT_NE(client.identifier, std::exchange(identifier, client.identifier));
            for (const auto& engine : client.engines) {
                text += std::to_string(client.processIdentifier) + " " + engine.engine + " " +
                        std::to_string(engine.busy) + ", ";
            }
        }
        return text;
    };
    EXPECT_EQ(clients(500ms), "7 render 250000000, 7 video 500000000, ");
    EXPECT_EQ(clients(1s + 1us), "7 render 500000001, 8 render 9, ");
    EXPECT_EQ(clients(2s), "");
    EXPECT_EQ(clients(3s + 10ns), "7 render 1, ");
    EXPECT_EQ(clients(4s), "");
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

constexpr Instant start{1'700'000'000s};

TEST(VirtualClock, RunsTimersByInstantThenByStart) {
    VirtualClock clock(start);
    std::string order;
    std::vector<std::unique_ptr<Timer>> timers;
    const auto add = [&](std::chrono::nanoseconds delay, char name) {
        timers.push_back(clock.start(delay, [&order, name] { order += name; }));
    };
    add(2ns, 'd');
    add(1ns, 'b');
    add(1ns, 'c');
    add(-5s, 'a');
    add(std::chrono::nanoseconds::max(), 'z');
    EXPECT_EQ(order, "");
    EXPECT_EQ(clock.nextDue(), start);
    while (clock.runNextDue()) {
    }
    EXPECT_EQ(order, "a");
    EXPECT_EQ(clock.nextDue(), start + 1ns);
    clock.advanceTo(start + 2ns); // what was due in between still comes first
    while (clock.runNextDue()) {
    }
    EXPECT_EQ(order, "abcd");
    clock.advanceTo(start);
    EXPECT_EQ(clock.now(), start + 2ns);
    EXPECT_EQ(clock.nextDue(), Instant::max());
}

TEST(VirtualClock, CancelsByDestructionAlsoFromWithinAnAction) {
    VirtualClock clock(start);
    int runs = 0;
    std::unique_ptr<Timer> own;
    std::unique_ptr<Timer> other;
    own = clock.start(0ns, [&, token = std::make_shared<int>(1)] {
        own.reset();
        other.reset();
        runs += *token; // the action outlives its timer
        own = clock.start(0ns, [&] { runs += 10; });
    });
    other = clock.start(0ns, [&] { runs += 100; });
    EXPECT_TRUE(clock.runNextDue());
    EXPECT_EQ(runs, 1);
    EXPECT_TRUE(clock.runNextDue());
    EXPECT_EQ(runs, 11);
    EXPECT_FALSE(clock.runNextDue());
    EXPECT_EQ(clock.nextDue(), std::nullopt);
}

} // namespace
} // namespace cindertop::simulated
