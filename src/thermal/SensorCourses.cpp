#include "thermal/SensorCourses.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace cindertop {

namespace {

constexpr std::int16_t noAnswer = std::numeric_limits<std::int16_t>::min();

std::int16_t tenthsOf(double celsius) {
    return static_cast<std::int16_t>(std::lround(celsius * 10));
}

} // namespace

std::size_t SensorCourses::occurrenceOf(std::span<const TemperatureReading> readings, std::size_t place) {
    return static_cast<std::size_t>(
        std::ranges::count(readings.first(place), readings[place].id, &TemperatureReading::id));
}

const SensorCourses::Course* SensorCourses::find(std::span<const TemperatureReading> readings,
                                                 std::size_t place) const {
    const auto occurrence = occurrenceOf(readings, place);
    const auto course = std::ranges::find_if(courses_, [&](const Course& each) {
        return each.id == readings[place].id && each.occurrence == occurrence;
    });
    return course == courses_.end() ? nullptr : &*course;
}

SensorCourses::Course* SensorCourses::courseFor(std::span<const TemperatureReading> readings,
                                                std::size_t place) {
    if (const auto* const known = find(readings, place)) {
        return &courses_[static_cast<std::size_t>(known - courses_.data())];
    }
    if (courses_.size() == mostSensors) {
        return nullptr;
    }
    const auto celsius = readings[place].celsius;
    return &courses_.emplace_back(Course{.id = readings[place].id,
                                         .occurrence = occurrenceOf(readings, place),
                                         .range = {.lowest = celsius, .highest = celsius},
                                         .latestStep = latestStep_ - 1,
                                         .tenths = {}});
}

/// Steps without an answer are kept as gaps, as far as they matter.
void SensorCourses::append(Course& course, double celsius, std::int64_t index) {
    const auto tenths = tenthsOf(celsius);
    if (index == course.latestStep && !course.tenths.empty()) {
        course.tenths.back() = std::max(course.tenths.back(), tenths);
        return;
    }
    const auto gap = std::min<std::int64_t>(index - course.latestStep - 1, mostSteps);
    course.tenths.insert(course.tenths.end(), static_cast<std::size_t>(std::max<std::int64_t>(gap, 0)),
                         noAnswer);
    course.tenths.push_back(tenths);
    if (course.tenths.size() > mostSteps) {
        course.tenths.erase(course.tenths.begin(),
                            course.tenths.end() - static_cast<std::ptrdiff_t>(mostSteps));
    }
    course.latestStep = index;
}

void SensorCourses::note(std::span<const TemperatureReading> readings, AwakeTime at) {
    latestStep_ =
        std::max(latestStep_, std::chrono::floor<std::chrono::seconds>(at.time_since_epoch()) / step);
    for (std::size_t place = 0; place < readings.size(); ++place) {
        auto* const course = readings[place].isPlausible() ? courseFor(readings, place) : nullptr;
        if (course != nullptr) {
            course->range.lowest = std::min(course->range.lowest, readings[place].celsius);
            course->range.highest = std::max(course->range.highest, readings[place].celsius);
            append(*course, readings[place].celsius, latestStep_);
        }
    }
}

std::vector<TemperatureReading> SensorCourses::withRanges(std::vector<TemperatureReading> readings) const {
    for (std::size_t place = 0; place < readings.size(); ++place) {
        if (const auto* const course = find(readings, place)) {
            readings[place].range = course->range;
        }
    }
    return readings;
}

SensorCourses::Steps SensorCourses::steps(std::span<const TemperatureReading> readings,
                                          std::size_t place) const {
    const auto* const course = find(readings, place);
    Steps steps;
    if (course == nullptr) {
        return steps;
    }
    for (const auto tenths : course->tenths) {
        steps.push_back(tenths == noAnswer ? std::nullopt : std::optional(tenths / 10.0));
    }
    const auto missing = std::min<std::int64_t>(latestStep_ - course->latestStep, mostSteps);
    steps.resize(steps.size() + static_cast<std::size_t>(missing));
    if (steps.size() > mostSteps) {
        steps.erase(steps.begin(), steps.end() - static_cast<std::ptrdiff_t>(mostSteps));
    }
    return steps;
}

} // namespace cindertop
