#include "cli/MachineSource.h"
#include "cli/Watch.h"
#include "fakes/FakeMachine.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <deque>
#include <vector>

namespace cindertop::cli {
namespace {

using enum Wake::Kind;

/// Plays a list of events; time passes when the timer's turn comes.
class FakeWatchEvents final : public WatchEvents {
public:
    explicit FakeWatchEvents(fakes::FakeClock& clock) : clock_(clock) {}

    std::deque<Wake> wakes;
    std::vector<double> delays;

    void startTimer(Seconds delay) override { delays.push_back(delay.count()); }

    Wake wait() override {
        const auto wake = wakes.empty() ? Wake{.kind = ended} : wakes.front();
        if (!wakes.empty()) {
            wakes.pop_front();
        }
        if (wake.kind == tick) {
            clock_.advance(std::chrono::round<std::chrono::nanoseconds>(Seconds{delays.back()}));
        }
        return wake;
    }

private:
    fakes::FakeClock& clock_;
};

class FakeWatchPrinter final : public WatchPrinter {
public:
    std::vector<MachineSnapshot> shown;
    int resizes = 0;
    int suspensions = 0;
    WriteResult answer;

    WriteResult show(const MachineReport& report) override {
        shown.push_back(report.snapshot);
        return answer;
    }

    void resize() override { ++resizes; }

    void suspend() override { ++suspensions; }
};

class WatchTest : public testing::Test {
protected:
    fakes::FakeMachine machine;
    FakeWatchEvents events{machine.clock};
    FakeWatchPrinter printer;
    MachineSampler sampler{machine.services(), fakes::pressureReaderOf(machine.services()),
                           ProcessOffenderConfiguration::defaultConfiguration(machine.process)};
    SampledMachine source{sampler, [](Seconds) {}};
    Watch watch{source, events, printer};
};

TEST_F(WatchTest, LooksAsOftenAsTheHeatRecommends) {
    machine.pressure->play({0, 1, 2, 2, 0});
    events.wakes = {{tick}, {tick}, {tick}, {tick}};
    EXPECT_EQ(watch.run(), Watch::End(std::nullopt));
    EXPECT_EQ(events.delays, (std::vector<double>{2, 1, 0.2, 0.2, 2}));
    EXPECT_EQ(printer.shown.back().measuredAt - printer.shown.front().measuredAt,
              std::chrono::milliseconds(3400));
}

TEST_F(WatchTest, LooksAsOftenAsTheUserWantsAndCountsTheProcessesEachTime) {
    machine.pressure->play({0, 2, 2});
    SampledMachine eager(sampler, [](Seconds) {}, SampledMachine::Census::each);
    events.wakes = {{tick}, {tick}};
    EXPECT_EQ(Watch(eager, events, printer, Seconds{0.5}).run(), Watch::End(std::nullopt));
    EXPECT_EQ(events.delays, (std::vector<double>{0.5, 0.5, 0.5}));
    for (const auto& snapshot : printer.shown) {
        EXPECT_EQ(snapshot.offenders.measuredAt, snapshot.measuredAt);
    }
}

TEST_F(WatchTest, RedrawsTheSameTickForAnotherSizeAndAfterASuspension) {
    events.wakes = {{resized}, {suspended}, {tick}};
    EXPECT_EQ(watch.run(), Watch::End(std::nullopt));
    EXPECT_EQ(printer.resizes, 1);
    EXPECT_EQ(printer.suspensions, 1);
    ASSERT_EQ(printer.shown.size(), 4U);
    EXPECT_EQ(printer.shown[0], printer.shown[2]);
    EXPECT_NE(printer.shown[2].measuredAt, printer.shown[3].measuredAt);
    EXPECT_EQ(events.delays.size(), 2U); // a redraw does not start the wait over
}

TEST_F(WatchTest, EndsForTheUserTheReaderAndASignal) {
    events.wakes = {{ended}};
    EXPECT_EQ(watch.run(), Watch::End(std::nullopt));
    events.wakes = {{readerGone}};
    EXPECT_EQ(watch.run(), Watch::End(std::nullopt));
    events.wakes = {{tick}, {terminated, SIGTERM}};
    EXPECT_EQ(watch.run(), Watch::End(SIGTERM));
}

TEST_F(WatchTest, EndsWhenTheOutputFailsButNotWhenItWasInterrupted) {
    printer.answer = std::unexpected(WriteError{ENOSPC});
    const auto full = watch.run();
    ASSERT_FALSE(full);
    EXPECT_EQ(full.error().code, ENOSPC);

    printer.answer = std::unexpected(WriteError{EINTR});
    events.wakes = {{terminated, SIGHUP}};
    EXPECT_EQ(watch.run(), Watch::End(SIGHUP));
}

} // namespace
} // namespace cindertop::cli
