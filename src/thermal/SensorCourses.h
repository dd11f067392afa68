#pragma once

#include "support/Instant.h"
#include "thermal/ThermalReading.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace cindertop {

/// What each sensor has said since the start: its lowest and highest temperature, and the last ten minutes in
/// steps of ten seconds. Its memory is bounded: a step is two bytes, and sensors beyond `mostSensors` are not
/// followed.
class SensorCourses {
public:
    static constexpr std::size_t mostSensors = 128;
    static constexpr std::size_t mostSteps = 60;
    static constexpr std::chrono::seconds step{10};

    /// The highest temperature of each step, oldest first; none where the sensor did not answer.
    using Steps = std::vector<std::optional<double>>;

    void note(std::span<const TemperatureReading> readings, AwakeTime at);

    /// The readings of the latest `note` with what each has been.
    std::vector<TemperatureReading> withRanges(std::vector<TemperatureReading> readings) const;

    /// Of the reading at this place, up to the latest step; empty for a sensor that is not followed.
    Steps steps(std::span<const TemperatureReading> readings, std::size_t place) const;

private:
    struct Course {
        std::string id;
        std::size_t occurrence; ///< sensors of one name are told apart by their order
        TemperatureRange range;
        std::int64_t latestStep;
        std::vector<std::int16_t> tenths; ///< of a degree, oldest first
    };

    static std::size_t occurrenceOf(std::span<const TemperatureReading> readings, std::size_t place);
    const Course* find(std::span<const TemperatureReading> readings, std::size_t place) const;
    Course* courseFor(std::span<const TemperatureReading> readings, std::size_t place);
    static void append(Course& course, double celsius, std::int64_t index);

    std::vector<Course> courses_;
    std::int64_t latestStep_ = 0;
};

} // namespace cindertop
