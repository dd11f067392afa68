#include "Scores.h"
#include "context/SustainedThermalPressure.h"

#include <gtest/gtest.h>

#include <vector>

// NOLINTBEGIN(modernize-use-designated-initializers): the struct of a table's rows names its columns
namespace cindertop {

namespace {

using Level = ThermalLevel;

struct Step {
    double at; ///< seconds
    std::optional<Level> level;
    double duration;
    bool isSustained;
};

AwakeTime timeAt(double seconds) {
    return AwakeTime(std::chrono::seconds(1'000)) +
           std::chrono::round<std::chrono::nanoseconds>(Seconds(seconds));
}

void expectSteps(SustainedThermalPressureConfiguration configuration, const std::vector<Step>& steps) {
    SustainedThermalPressureTracker tracker(configuration);
    for (const auto& [at, level, duration, isSustained] : steps) {
        EXPECT_EQ(tracker.update(level.transform(scoreAt), timeAt(at)),
                  SustainedThermalPressureSnapshot(isSustained, Seconds(duration), level,
                                                   configuration.minimumLevel))
            << "at " << at;
    }
}

TEST(SustainedThermalPressureTracker, IsSustainedFromTheMinimumDurationOn) {
    expectSteps(SustainedThermalPressureConfiguration::defaults(),
                {
                    {0, Level::serious, 0, false},
                    {60, Level::critical, 60, false},
                    {119.9, Level::serious, 119.9, false},
                    {120, Level::serious, 120, true},
                    {500.25, Level::critical, 500.25, true},
                });
}

TEST(SustainedThermalPressureTracker, OneTickBelowOrWithoutAScoreEndsTheStretch) {
    expectSteps(SustainedThermalPressureConfiguration::defaults(), {
                                                                       {0, Level::serious, 0, false},
                                                                       {130, Level::fair, 0, false},
                                                                       {131, Level::serious, 0, false},
                                                                       {251, Level::serious, 120, true},
                                                                       {252, std::nullopt, 0, false},
                                                                       {253, Level::critical, 0, false},
                                                                   });
}

TEST(SustainedThermalPressureTracker, AResetStartsAnew) {
    SustainedThermalPressureTracker tracker(SustainedThermalPressureConfiguration::defaults());
    tracker.update(scoreAt(Level::serious), timeAt(0));
    tracker.reset();
    EXPECT_EQ(tracker.update(scoreAt(Level::serious), timeAt(200)).activeDuration, Seconds(0));
}

} // namespace

} // namespace cindertop

// NOLINTEND(modernize-use-designated-initializers)
