#include "platform/linux/MachineHeat.h"

#include "platform/linux/FileReading.h"
#include "platform/linux/SensorNames.h"

#include <algorithm>
#include <string>
#include <utility>

namespace cindertop::linux_platform {

namespace {

constexpr MilliCelsius lowestLimit = milliCelsius(50);
constexpr MilliCelsius highestLimit = milliCelsius(150);

} // namespace

ProcessorLimits::ProcessorLimits(const Roots& roots, const MonotonicClock& clock)
    : folder_(roots, "class/hwmon", clock) {}

std::optional<MilliCelsius> ProcessorLimits::headroom() {
    learnIfOutdated();
    answering_ = 0;
    std::optional<MilliCelsius> smallest;
    for (auto& processor : processors_) {
        auto headroom = headroomOfHottest(processor.packages);
        if (!headroom) {
            headroom = headroomOfHottest(processor.cores);
        }
        if (headroom) {
            ++answering_;
            smallest = std::min(smallest.value_or(*headroom), *headroom);
        }
    }
    return smallest;
}

void ProcessorLimits::learnIfOutdated() {
    if (!folder_.isOutdated()) {
        return;
    }
    processors_.clear();
    for (const auto& name : listFolder(folder_.path()).value_or(std::vector<std::string>{})) {
        const auto chip = folder_.path() / name;
        if (readAttribute(chip / "name") == "coretemp") {
            processors_.push_back(learn(chip));
        }
    }
}

ProcessorLimits::Processor ProcessorLimits::learn(const std::filesystem::path& chip) {
    Processor processor;
    for (const auto& file : listFolder(chip).value_or(std::vector<std::string>{})) {
        const auto number = parseTemperatureInput(file);
        if (!number) {
            continue;
        }
        const auto stem = "temp" + std::to_string(*number);
        const auto limit = readInteger(chip / (stem + "_crit"));
        if (!limit || *limit < lowestLimit || *limit > highestLimit) {
            continue;
        }
        const auto label = readAttribute(chip / (stem + "_label")).value_or("");
        auto& sensors = label.starts_with("Package id") || label.starts_with("Physical id")
                            ? processor.packages
                            : processor.cores;
        sensors.push_back({.temperature = AttributeFile(chip / file), .limit = *limit});
    }
    return processor;
}

std::optional<MilliCelsius> ProcessorLimits::Sensor::read() {
    const auto answer = temperature.integer();
    return answer && isPlausible(*answer) ? answer : std::nullopt;
}

std::optional<MilliCelsius> ProcessorLimits::headroomOfHottest(std::vector<Sensor>& sensors) {
    std::optional<MilliCelsius> hottest;
    std::optional<MilliCelsius> headroom;
    for (auto& sensor : sensors) {
        if (const auto celsius = sensor.read(); celsius && (!hottest || *celsius > *hottest)) {
            hottest = celsius;
            headroom = sensor.limit - *celsius;
        }
    }
    return headroom;
}

namespace {

constexpr MilliCelsius seriousHeadroom = milliCelsius(3);
constexpr MilliCelsius fairHeadroom = milliCelsius(10);

} // namespace

MachineHeat::MachineHeat(const Roots& roots, MonotonicClock clock, ThermalZones& zones)
    : clock_(std::move(clock)), zones_(zones), limits_(roots, clock_) {}

HeatReading MachineHeat::read() {
    const std::scoped_lock lock(mutex_);
    if (!readAt_.isRecent(clock_())) {
        reading_ = readAt_.around(clock_, [this] { return readAll(); });
    }
    return reading_;
}

SourceStatus MachineHeat::status() const {
    const std::scoped_lock lock(mutex_);
    auto status = zones_.status();
    if (!status.isAvailable && limits_.answering() > 0) {
        status.isAvailable = true;
        status.reason = "none, but the processor's own limit";
    }
    return status;
}

/// A cool processor alone makes no "nominal": its sensor knows nothing about the rest of the machine.
HeatReading MachineHeat::readAll() {
    const auto zones = zones_.read();
    const auto headroom = limits_.headroom();
    HeatReading reading{.state = zones.state,
                        .isAtLimit = zones.isAtLimit,
                        .isProcessorHot = headroom && *headroom <= fairHeadroom};
    if (reading.isProcessorHot) {
        reading.state = std::max(reading.state, *headroom <= seriousHeadroom ? 2 : 1);
    }
    return reading;
}

} // namespace cindertop::linux_platform
