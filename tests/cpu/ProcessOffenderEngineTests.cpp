#include "cpu/ProcessOffenderEngine.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>

namespace cindertop {
namespace {

using namespace std::chrono_literals;
using enum ProcessOffenderSnapshotState;

constexpr Instant start{1'700'000'000s};

/// Hands out the census that the test has put in.
class ScriptedCensus final : public ProcessCPUReadingProviding {
public:
    explicit ScriptedCensus(std::vector<ProcessCPUReading>& census) : census_(&census) {}

    std::vector<ProcessCPUReading> readings(Instant at) override {
        std::vector<ProcessCPUReading> readings = *census_;
        for (ProcessCPUReading& reading : readings) {
            reading.measuredAt = at;
        }
        return readings;
    }

private:
    std::vector<ProcessCPUReading>* census_;
};

class ProcessOffenderEngineTest : public testing::Test {
protected:
    /// The next census, one second after the last: each process has worked for 100 ms more.
    ProcessOffenderSnapshot next() {
        for (ProcessCPUReading& reading : census) {
            reading.cumulativeCPUTimeNanoseconds += 100'000'000;
        }
        at += 1s;
        awake += 1s;
        return engine.snapshot(configuration, at, awake);
    }

    static ProcessCPUReading process(std::int32_t identifier, std::string name) {
        ProcessCPUReading reading;
        reading.processIdentifier = identifier;
        reading.name = std::move(name);
        return reading;
    }

    std::vector<ProcessCPUReading> census{process(1, "one")};
    Instant at = start;
    AwakeTime awake{5s};
    LocalizedComparison comparison{"en_GB"};
    ProcessOffenderConfiguration configuration{ProcessOffenderConfiguration::Fields{}};
    ProcessOffenderEngine engine{std::make_unique<ScriptedCensus>(census), comparison, OperatingSystem::mac};
};

TEST_F(ProcessOffenderEngineTest, NeedsTwoCensusesAndStartsOverAfterAnEmptyOne) {
    const auto first = next();
    EXPECT_EQ(first, (ProcessOffenderSnapshot{.state = collecting, .offenders = {}, .measuredAt = at}));
    EXPECT_EQ(next().state, ready);
    const auto former = std::exchange(census, {});
    const auto empty = next();
    EXPECT_EQ(empty, (ProcessOffenderSnapshot{.state = unavailable, .offenders = {}, .measuredAt = at}));
    EXPECT_EQ(next().state, unavailable);
    census = former;
    EXPECT_EQ(next().state, collecting);
    const auto again = next();
    EXPECT_EQ(again.state, ready);
    EXPECT_EQ(again.offenders.at(0).history.size(), 2U); // an empty census keeps the histories
}

TEST_F(ProcessOffenderEngineTest, ForgetsEverythingOnReset) {
    next();
    next();
    engine.reset();
    EXPECT_EQ(next().state, collecting);
    EXPECT_EQ(next().offenders.at(0).history.size(), 1U);
}

TEST_F(ProcessOffenderEngineTest, KeepsTheLatestPointsOldestFirst) {
    for (int round = 0; round < 50; ++round) {
        next();
    }
    const auto history = next().offenders.at(0).history;
    ASSERT_EQ(history.size(), 48U);
    EXPECT_EQ(history.front(), ProcessOffenderHistoryPoint(at - 47s, 10));
    EXPECT_EQ(history.back(), ProcessOffenderHistoryPoint(at, 10));
    EXPECT_TRUE(std::ranges::is_sorted(history, {}, &ProcessOffenderHistoryPoint::measuredAt));
}

TEST_F(ProcessOffenderEngineTest, MeasuresSharesOfAwakeTimeWhateverTheClockSays) {
    next();
    next();
    for (const auto step : {3h, -5h, 1h}) {
        at += step;
        const auto offender = next().offenders.at(0);
        EXPECT_DOUBLE_EQ(offender.cpuPercent, 10);
        EXPECT_EQ(offender.history.back().measuredAt, at);
        EXPECT_TRUE(std::ranges::is_sorted(offender.history, {}, &ProcessOffenderHistoryPoint::measuredAt));
    }
}

TEST_F(ProcessOffenderEngineTest, LosesTheHistoryOfAGroupThatRestedOnce) {
    census.push_back(process(2, "two"));
    next();
    next();
    EXPECT_EQ(next().offenders.at(1).history.size(), 2U);
    census[1].cumulativeCPUTimeNanoseconds -= 100'000'000; // no progress until the next census
    EXPECT_EQ(next().offenders.size(), 1U);
    const auto offenders = next().offenders;
    EXPECT_EQ(offenders.at(0).history.size(), 4U);
    EXPECT_EQ(offenders.at(1).history.size(), 1U);
}

} // namespace
} // namespace cindertop
