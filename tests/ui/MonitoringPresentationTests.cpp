#include "app/FakeProgram.h"
#include "ui/presentation/ContextTexts.h"
#include "ui/presentation/MonitoringPresentation.h"
#include "ui/presentation/ThermalHistoryPlot.h"

#include <gtest/gtest.h>

#include <limits>
#include <utility>
#include <vector>

namespace cindertop::ui {
namespace {

using namespace std::chrono_literals;

TEST(DurationText, SaysTheTwoGreatestUnitsAtMost) {
    const std::vector<std::pair<double, const char*>> cases{
        {-5, "0s"},      {std::numeric_limits<double>::quiet_NaN(), "0s"},
        {0.5, "1s"}, // halves away from zero
        {2.5, "3s"},     {59.4, "59s"},
        {59.5, "1m"},    {61, "1m"},
        {3599.4, "59m"}, {3599.5, "1h"},
        {3660, "1h 1m"}, {7200, "2h"},
        {7259, "2h"},    {90000, "25h"},
    };
    for (const auto& [seconds, text] : cases) {
        EXPECT_EQ(formattedDuration(seconds), text) << seconds;
    }
    EXPECT_TRUE(formattedDuration(std::numeric_limits<double>::infinity()).endsWith('m'));
}

ThermalHistorySample sampleAt(Instant instant, std::int64_t score = 10) {
    return {instant, ThermalLevel::normal, score, std::nullopt, std::nullopt, std::nullopt, std::nullopt, {}};
}

TEST(ThermalHistoryPlot, PartsRunsWhereSamplesAreMissing) {
    const Instant now{100h};
    const std::vector samples{sampleAt(now - 61min),       sampleAt(now - 60min),       sampleAt(now - 30min),
                              sampleAt(now - 30min + 30s), sampleAt(now - 30min + 61s), sampleAt(now),
                              sampleAt(now + 5s)};
    const auto runs = thermalHistoryRuns(samples, now, 60min);
    std::vector<std::vector<double>> positions;
    for (const auto& run : runs) {
        auto& row = positions.emplace_back();
        std::ranges::transform(run, std::back_inserter(row), &ThermalHistoryPoint::position);
    }
    const std::vector<std::vector<double>> expected{{0}, {0.5, 1830.0 / 3600}, {1861.0 / 3600}, {1}};
    EXPECT_EQ(positions, expected);
    EXPECT_EQ(nearestPoint(runs, 0.2)->sample, &samples[1]);
    EXPECT_EQ(nearestPoint(runs, 0.9)->sample, &samples[5]);
    EXPECT_FALSE(nearestPoint({}, 0.5));
}

class MonitoringPresentationTest : public testing::Test {
protected:
    FakeProgram program;
    std::unique_ptr<MonitoringPresentation> monitoring;
    int changes = 0;

    void open(const AppSettingsFields& settings = {}) {
        monitoring = std::make_unique<MonitoringPresentation>(program.startWith(settings));
        QObject::connect(monitoring.get(), &MonitoringPresentation::changed, [this] { ++changes; });
    }
};

TEST_F(MonitoringPresentationTest, WaitsForASecondSampleAndForTheFirstOffender) {
    open();
    EXPECT_FALSE(monitoring->hasChart());
    EXPECT_EQ(monitoring->trackedText(), "0s");
    EXPECT_EQ(monitoring->seriousText(), "0 episodes");
    EXPECT_EQ(monitoring->frequentLoadText(), "No clear offender yet");
    EXPECT_EQ(monitoring->frequentLoadIconSource(), "");
    program.pass(0s);
    EXPECT_FALSE(monitoring->hasChart());
    monitoring->inspect(1);
    EXPECT_FALSE(monitoring->readout().isPresent);
    program.pass(10s);
    EXPECT_TRUE(monitoring->hasChart());
    EXPECT_TRUE(monitoring->readout().isPresent); // the pointer has not moved
}

TEST_F(MonitoringPresentationTest, SumsUpTheDay) {
    program.machine.processes.processes.clear();
    auto& busy = program.machine.processes.add(7, "Lumen");
    busy.path = "/Applications/Lumen.app/Contents/MacOS/Lumen";
    program.machine.applications.bundles["/Applications/Lumen.app"].identifier = "org.example.lumen";
    open({.historyDurationMinutes = 180});
    for (const unsigned pressure : {0U, 3U}) {
        program.machine.pressure->play({pressure});
        for (int second = 0; second < 90; ++second) {
            busy.accounting->totalUserTime += 1'000'000'000;
            program.pass(1s);
        }
    }
    EXPECT_EQ(monitoring->criticalText(), "1 episodes");
    EXPECT_EQ(monitoring->frequentLoadText(), "Lumen");
    EXPECT_EQ(monitoring->frequentLoadIconSource(), "image://application/org.example.lumen/Lumen");
    const auto durations = monitoring->levelDurations();
    EXPECT_NEAR(durations[0], 90, 10);
    EXPECT_EQ(durations[0] + durations[1] + durations[2] + durations[3], monitoring->totalDuration());
    EXPECT_TRUE(monitoring->historySummary().contains(", Critical. Highest "));

    program.machine.pressure->play({0});
    program.pass(70min);
    EXPECT_EQ(monitoring->criticalText(), "1 episodes");
    EXPECT_FALSE(monitoring->historySummary().contains("Critical")); // it has left the chart
}

TEST_F(MonitoringPresentationTest, NamesNoLevelWhereNothingToldTheHeat) {
    program.machine.process.state = 9;
    program.machine.pressure->registrationStatus = 1;
    open({.historyDurationMinutes = 30});
    program.pass(20s);
    EXPECT_TRUE(monitoring->hasChart());
    EXPECT_FALSE(monitoring->hasHeat());
    EXPECT_FALSE(monitoring->hasLevels());
    EXPECT_EQ(monitoring->historySummary(), "No heat readings");
    monitoring->inspect(1);
    EXPECT_EQ(monitoring->readout().levelLabel, "No heat readings");
    EXPECT_EQ(monitoring->readout().score, "");
    EXPECT_EQ(monitoring->title(), "Last 30 Minutes");

    program.machine.process.state = 0;
    program.pass(20s);
    EXPECT_TRUE(monitoring->hasLevels());
    EXPECT_TRUE(monitoring->historySummary().startsWith("Score 8, Normal"));
}

TEST_F(MonitoringPresentationTest, ReadsAMomentOut) {
    program.machine.temperatureEvents.sensors = {{.product = "PMU tdie1", .celsius = 71.4}};
    open({.experimentalTemperatureSensorsEnabled = true});
    program.pass(10min);
    EXPECT_TRUE(monitoring->hasTemperatures());
    EXPECT_FALSE(monitoring->readout().isPresent);
    monitoring->moveInspection(-1); // the first key stops at the newest
    EXPECT_GT(monitoring->readout().position, 0.99);
    monitoring->moveInspection(-3);
    const auto& readout = monitoring->readout();
    EXPECT_NEAR(readout.position, 0.95, 0.002);
    EXPECT_EQ(readout.levelLabel, "Normal");
    EXPECT_EQ(readout.temperature, "71°C");
    EXPECT_EQ(readout.cpu, ""); // the machine does not tell
    EXPECT_EQ(readout.score.toDouble() / 100, readout.height);
    monitoring->inspect(-1);
    EXPECT_FALSE(monitoring->readout().isPresent);
}

TEST_F(MonitoringPresentationTest, MovesOnWithTheTimeWhileItIsShown) {
    open();
    program.pass(10s);
    program.state->setPaused(true);
    changes = 0;
    program.pass(1min);
    EXPECT_EQ(changes, 0);
    monitoring->setShown(true);
    EXPECT_EQ(monitoring->now().toSecsSinceEpoch(), program.clock.now().time_since_epoch() / 1s);
    program.pass(1min);
    EXPECT_EQ(changes, 7);
    monitoring->setShown(false);
    program.pass(1min);
    EXPECT_EQ(changes, 8);
}

} // namespace
} // namespace cindertop::ui
