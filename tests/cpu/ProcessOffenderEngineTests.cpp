#include "cpu/ProcessOffenderEngine.h"
#include "fakes/FakeGraphicsUsage.h"

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
    fakes::FakeGraphicsUsage graphics;
    ProcessOffenderEngine engine{std::make_unique<ScriptedCensus>(census), comparison, OperatingSystem::mac,
                                 &graphics};
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

TEST_F(ProcessOffenderEngineTest, FoldsGraphicsIntoTheSameApplications) {
    const auto draw = [this](std::int32_t process, std::uint64_t render, std::uint64_t video) {
        for (auto& client : graphics.current) {
            if (client.processIdentifier == process) {
                client.engines[0].busy += render * 1'000'000;
                client.engines[1].busy += video * 1'000'000;
                return;
            }
        }
        graphics.current.push_back({.processIdentifier = process,
                                    .device = "card",
                                    .identifier = static_cast<std::uint64_t>(process),
                                    .engines = {{"render", render}, {"video", video}}});
    };
    census = {process(1, "browser"), process(2, "browser"), process(3, "compiler")};
    next();
    draw(1, 0, 0);
    draw(2, 0, 0);
    EXPECT_EQ(next().offenders.at(0).graphicsPercent, std::nullopt); // nothing to compare with yet
    draw(1, 300, 50);
    draw(2, 100, 200);
    const auto offenders = next().offenders;
    ASSERT_EQ(offenders.size(), 2U);
    EXPECT_EQ(offenders[0].displayName, "browser");
    ASSERT_TRUE(offenders[0].graphicsPercent);
    EXPECT_DOUBLE_EQ(*offenders[0].graphicsPercent, 40); // one engine's sum, not 30 + 20
    EXPECT_EQ(offenders[0].children.at(0).graphicsPercent, 30);
    EXPECT_EQ(offenders[0].children.at(1).graphicsPercent, 20);
    EXPECT_EQ(offenders[1].graphicsPercent, std::nullopt);
    at += 1h; // the wall clock is set
    draw(1, 300, 0);
    EXPECT_DOUBLE_EQ(next().offenders.at(0).graphicsPercent.value_or(-1), 30);
}

TEST_F(ProcessOffenderEngineTest, ShowsWhatDrawsMuchAndComputesLittle) {
    census.clear();
    for (std::int32_t identifier = 1; identifier <= 12; ++identifier) {
        census.push_back(process(identifier, "p" + std::to_string(identifier)));
        graphics.current.push_back({.processIdentifier = identifier,
                                    .device = "card",
                                    .identifier = static_cast<std::uint64_t>(identifier),
                                    .engines = {{"render", 0}}});
    }
    // Each computes less than the one before, the last nothing at all.
    const auto pass = [this](const std::vector<std::uint64_t>& drawn) {
        for (std::size_t index = 0; index < census.size(); ++index) {
            const std::uint64_t less = index == 11 ? 100 : index * 5;
            census[index].cumulativeCPUTimeNanoseconds -= less * 1'000'000;
            graphics.current[index].engines[0].busy += drawn.at(index) * 1'000'000;
        }
        std::vector<std::string> names;
        for (const auto& offender : next().offenders) {
            names.push_back(offender.displayName);
        }
        return names;
    };
    using Names = std::vector<std::string>;
    for (auto& reading : census) {
        reading.cumulativeCPUTimeNanoseconds = 1'000'000'000;
    }
    std::vector<std::uint64_t> drawn(12);
    pass(drawn);
    EXPECT_EQ(pass(drawn), (Names{"p1", "p2", "p3", "p4", "p5", "p6", "p7", "p8"}));
    drawn = {0, 0, 0, 0, 0, 0, 0, 600, 0, 40, 0, 700};
    EXPECT_EQ(pass(drawn), (Names{"p1", "p2", "p3", "p4", "p5", "p6", "p8", "p12"})); // 4 % is not much
    drawn = {0, 0, 0, 0, 0, 0, 0, 0, 60, 70, 80, 90};
    EXPECT_EQ(pass(drawn), (Names{"p1", "p2", "p3", "p4", "p5", "p10", "p11", "p12"}));
}

} // namespace
} // namespace cindertop
