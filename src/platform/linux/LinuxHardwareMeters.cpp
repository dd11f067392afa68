#include "platform/linux/LinuxHardwareMeters.h"

#include "platform/linux/SensorPatterns.h"
#include "support/Text.h"

#include <algorithm>
#include <array>
#include <set>
#include <utility>

namespace cindertop::linux_platform {

namespace {

using MeterPath = std::filesystem::path;

constexpr std::chrono::seconds unobservedPeriod{30};
constexpr std::chrono::seconds longestMeterHold{60}; ///< an older answer says nothing about the present
constexpr std::int64_t mostRevolutions = 30'000;     ///< a minute; firmware says 65535 for "no answer"
constexpr std::int64_t mostMicrowatts = 2'000'000'000;

struct PowerMeterRow {
    std::string_view chip{};
    std::string_view file{};
    std::string_view label{}; ///< that it must have; empty: any
    bool isWholeMachine = false;
};

/// The first row of a chip that answers counts. Graphics chips list the same power again over other times.
constexpr auto powerMeterRows = std::to_array<PowerMeterRow>({
    {"amdgpu", "power1_average", "", false},
    {"amdgpu", "power1_input", "", false},
    {"nouveau", "power1_input", "", false},
    {"macsmc_hwmon", "power#_input", "Total System Power", true},
});

constexpr auto graphicsChips = std::to_array<std::string_view>({"amdgpu", "nouveau", "radeon", "xe", "i915"});

std::string labelBeside(const MeterPath& chip, std::string_view input) {
    const auto stem = input.substr(0, input.find('_'));
    return repairedUtf8(
        trimmingWhitespace(readAttribute(chip / (std::string(stem) + "_label")).value_or("")));
}

/// The graphics unit of a processor measures the whole processor: only there the voltage of its north bridge
/// can be read.
std::string chipName(const MeterPath& chip) {
    const auto label = readAttribute(chip / "in1_label").value_or("");
    return label == "vddnb" ? "Processor with graphics" : "Graphics chip";
}

std::string fanName(const MeterPath& chip, std::string_view chipName, std::string_view input) {
    auto label = labelBeside(chip, input);
    if (!label.empty()) {
        return label;
    }
    return std::ranges::find(graphicsChips, chipName) != graphicsChips.end() ? "Graphics Fan" : "Fan";
}

bool isCopyOfSupply(const MeterPath& device) {
    return device.parent_path().filename() == "power_supply";
}

/// Names that occur more than once are numbered.
template <typename Meters>
void makeMeterNamesDistinct(Meters& meters) {
    std::multiset<std::string> names;
    for (const auto& meter : meters) {
        names.insert(meter.name);
    }
    for (auto& meter : meters) {
        if (names.count(meter.name) < 2) {
            continue;
        }
        int number = 1;
        while (names.contains(meter.name + ' ' + std::to_string(number))) {
            ++number;
        }
        meter.name += ' ' + std::to_string(number);
        names.insert(meter.name);
    }
}

} // namespace

LinuxHardwareMeters::LinuxHardwareMeters(const Roots& roots, MonotonicClock clock,
                                         std::shared_ptr<SensorDevices> devices)
    : clock_(std::move(clock)), devices_(std::move(devices)), folder_(roots, "class/hwmon", clock_) {}

MeterReadings LinuxHardwareMeters::read() {
    const auto now = clock_();
    if (isObserved_ || !readAt_ || now - *readAt_ >= unobservedPeriod) {
        learnIfOutdated();
        latest_ = readAll();
        readAt_ = now;
    }
    return latest_;
}

MeterReadings LinuxHardwareMeters::readAll() {
    constexpr double microwattsOfWatt = 1e6;
    MeterReadings readings;
    for (auto& meter : meters_) {
        const auto value = ask(meter);
        if (!value || (meter.mayBeBare && !meter.hasTurned)) {
            continue;
        }
        const auto watts = static_cast<double>(*value) / microwattsOfWatt;
        switch (meter.kind) {
        case Kind::fan:
            readings.fans.push_back({.name = meter.name, .revolutionsPerMinute = *value});
            break;
        case Kind::machine:
            readings.machineWatts = watts;
            break;
        case Kind::chip:
            readings.chips.push_back({.name = meter.name, .watts = watts});
            break;
        }
    }
    return readings;
}

/// A device that would fall asleep without reads is read together with its other sensors, or when its last
/// answer is too old.
std::optional<std::int64_t> LinuxHardwareMeters::ask(Meter& meter) {
    const auto now = clock_();
    if (!meter.device->isAwake(now)) {
        return std::nullopt;
    }
    if (!meter.readAt || meter.device->isDue(now) || now - *meter.readAt >= longestMeterHold) {
        const auto most = meter.kind == Kind::fan ? mostRevolutions : mostMicrowatts;
        meter.latest = meter.file.integer().and_then([&](std::int64_t value) {
            return value >= 0 && value <= most ? std::optional(value) : std::nullopt;
        });
        meter.hasTurned = meter.hasTurned || meter.latest.value_or(0) > 0;
        meter.readAt = clock_();
        meter.device->wasRead(*meter.readAt);
    }
    return meter.latest;
}

void LinuxHardwareMeters::learnIfOutdated() {
    if (!folder_.isOutdated()) {
        return;
    }
    std::vector<Meter> found;
    for (const auto& name : listFolder(folder_.path()).value_or(std::vector<std::string>{})) {
        learnChip(folder_.path() / name, found);
    }
    makeMeterNamesDistinct(found);
    for (auto& meter : found) {
        keepFormerRead(meter);
    }
    meters_ = std::move(found);
}

void LinuxHardwareMeters::learnChip(const std::filesystem::path& chip, std::vector<Meter>& found) const {
    const auto name = readAttribute(chip / "name").value_or("");
    const auto device = linkedFolder(chip / "device");
    if (isCopyOfSupply(device)) {
        return;
    }
    const auto files = listFolder(chip).value_or(std::vector<std::string>{});
    const auto shared = devices_->at(device.empty() ? chip / "device/power" : device / "power");
    const auto add = [&](Kind kind, std::string meterName, const std::string& file, bool mayBeBare) {
        found.push_back({.kind = kind,
                         .name = std::move(meterName),
                         .file = AttributeFile(chip / file),
                         .device = shared,
                         .mayBeBare = mayBeBare});
    };
    constexpr std::ptrdiff_t mostFansOfLaptops = 2;
    const auto isFan = [](std::string_view file) { return matchPattern("fan#_input", file).has_value(); };
    const bool isBoard = std::ranges::count_if(files, isFan) > mostFansOfLaptops;
    for (const auto& file : files) {
        if (isFan(file)) {
            add(Kind::fan, fanName(chip, name, file), file, isBoard && labelBeside(chip, file).empty());
        }
    }
    for (const auto& row : powerMeterRows) {
        const auto file = std::ranges::find_if(files, [&](const std::string& each) {
            return row.chip == name && (row.file == each || matchPattern(row.file, each)) &&
                   (row.label.empty() || labelBeside(chip, each) == row.label);
        });
        if (file != files.end()) {
            add(row.isWholeMachine ? Kind::machine : Kind::chip,
                row.isWholeMachine ? std::string("Machine") : chipName(chip), *file, false);
            break;
        }
    }
}

void LinuxHardwareMeters::keepFormerRead(Meter& meter) const {
    const auto former = std::ranges::find_if(
        meters_, [&](const Meter& known) { return known.file.path() == meter.file.path(); });
    if (former != meters_.end()) {
        meter.hasTurned = former->hasTurned;
        meter.latest = former->latest;
        meter.readAt = former->readAt;
    }
}

} // namespace cindertop::linux_platform
