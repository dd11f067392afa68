#include "thermal/SensorCourses.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <vector>

namespace cindertop {
namespace {

using Readings = std::vector<TemperatureReading>;
using Steps = SensorCourses::Steps;

TemperatureReading reading(const std::string& id, double celsius) {
    return {.id = id, .label = id, .celsius = celsius, .kind = ThermalSensorKind::cpu};
}

AwakeTime at(int seconds) {
    return AwakeTime(std::chrono::seconds(seconds));
}

TEST(SensorCourses, KeepTheRangeOfEachSensorAlsoOfThoseOfOneName) {
    SensorCourses courses;
    courses.note(Readings{reading("die", 40), reading("die", 70), reading("ssd", 30)}, at(0));
    courses.note(Readings{reading("die", 45), reading("die", 60)}, at(2));
    courses.note(Readings{reading("die", 200)}, at(4)); // broken
    const auto found = courses.withRanges({reading("die", 45), reading("die", 60), reading("new", 1)});
    EXPECT_EQ(found[0].range, (TemperatureRange{40, 45}));
    EXPECT_EQ(found[1].range, (TemperatureRange{60, 70}));
    EXPECT_EQ(found[2].range, std::nullopt);
}

TEST(SensorCourses, KeepTheHighestOfEachTenSecondsAndGaps) {
    SensorCourses courses;
    for (const auto& [seconds, celsius] :
         std::to_array<std::pair<int, double>>({{100, 40}, {104, 50.25}, {109, 45}, {110, 60}, {135, -5}})) {
        courses.note(Readings{reading("cpu", celsius)}, at(seconds));
    }
    const Readings now{reading("cpu", 0)};
    EXPECT_EQ(courses.steps(now, 0), (Steps{50.3, 60, std::nullopt, -5}));
    courses.note(Readings{reading("other", 1)}, at(151)); // it answers no more
    EXPECT_EQ(courses.steps(now, 0), (Steps{50.3, 60, std::nullopt, -5, std::nullopt, std::nullopt}));
}

TEST(SensorCourses, AreBounded) {
    SensorCourses courses;
    for (int step = 0; step < 1000; ++step) {
        courses.note(Readings{reading("cpu", step % 100)}, at(step * 10));
    }
    const auto steps = courses.steps(Readings{reading("cpu", 0)}, 0);
    ASSERT_EQ(steps.size(), SensorCourses::mostSteps);
    EXPECT_EQ(steps.front(), 40);
    EXPECT_EQ(steps.back(), 99);
    courses.note(Readings{reading("cpu", 7)}, at(1'000'000));
    EXPECT_EQ(courses.steps(Readings{reading("cpu", 0)}, 0).size(), SensorCourses::mostSteps);

    Readings many;
    for (int sensor = 0; sensor < 200; ++sensor) {
        many.push_back(reading(std::to_string(sensor), 50));
    }
    courses.note(many, at(1'000'010));
    EXPECT_TRUE(courses.steps(many, 199).empty());
    EXPECT_EQ(courses.withRanges(many)[199].range, std::nullopt);
}

} // namespace
} // namespace cindertop
