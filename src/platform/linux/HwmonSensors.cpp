#include "platform/linux/HwmonSensors.h"

#include "platform/linux/SensorSearch.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace cindertop::linux_platform {

namespace {

constexpr std::chrono::seconds storagePeriod{30};

constexpr double tenths = 10;
constexpr double thousandths = 1000;

} // namespace

/// A chip's hardware, shared by the sensors on it.
class HwmonSensors::Device {
public:
    explicit Device(std::filesystem::path runtimeStatus) : runtimeStatus_(std::move(runtimeStatus)) {}

    /// "unsupported" is a device without power management at run time, as most processor chips are.
    bool isAwake(std::chrono::nanoseconds now) {
        if (!askedAt_ || now - *askedAt_ >= sameReadingWindow) {
            const auto status = runtimeStatus_.word();
            isAwake_ = status ? *status == "active" || *status == "unsupported"
                              : status.error() == FileError::missing;
            askedAt_ = now;
        }
        return isAwake_;
    }

private:
    AttributeFile runtimeStatus_;
    std::optional<std::chrono::nanoseconds> askedAt_;
    bool isAwake_ = false;
};

struct HwmonSensors::Sensor {
    std::string product;
    bool isStorage;                 ///< a read can send the drive a command
    std::shared_ptr<Device> device; ///< none: it never sleeps
    std::string zone;               ///< read through the thermal zones; empty: read from the file
    AttributeFile file;
    double unitsADegree;
    std::optional<std::chrono::nanoseconds> readAt;
    bool answers = false; ///< at the last read
};

HwmonSensors::HwmonSensors(const Roots& roots, MonotonicClock clock, ThermalZones& zones)
    : roots_(roots),
      clock_(std::move(clock)),
      zones_(zones),
      chipFolder_(roots, "class/hwmon", clock_),
      zoneFolder_(roots, "class/thermal", clock_),
      supplyFolder_(roots, "class/power_supply", clock_) {}

HwmonSensors::~HwmonSensors() = default;

HwmonSensors::SensorList HwmonSensors::list() {
    const std::scoped_lock lock(mutex_);
    learnIfOutdated();
    SensorList readable;
    readable.reserve(sensors_.size());
    std::ranges::copy_if(sensors_, std::back_inserter(readable),
                         [&](const auto& sensor) { return !isResting(*sensor) && isAwake(*sensor); });
    return readable;
}

const std::string& HwmonSensors::product(const Sensor& sensor) {
    return sensor.product;
}

std::optional<double> HwmonSensors::celsius(Sensor& sensor) {
    const std::scoped_lock lock(mutex_);
    if (isResting(sensor) || !isAwake(sensor)) {
        return std::nullopt;
    }
    sensor.readAt = clock_();
    const auto units = sensor.zone.empty() ? sensor.file.integer() : zones_.temperature(sensor.zone);
    sensor.answers = units.has_value();
    return units.transform(
        [&](std::int64_t value) { return static_cast<double>(value) / sensor.unitsADegree; });
}

SourceStatus HwmonSensors::status() const {
    const std::scoped_lock lock(mutex_);
    const auto status = [](bool isAvailable, std::string reason) {
        return SourceStatus{
            .name = "temperature sensors", .isAvailable = isAvailable, .reason = std::move(reason)};
    };
    if (!isLearnt_) {
        return status(false, "not read yet");
    }
    if (sensors_.empty()) {
        return status(false, "no known temperature sensor");
    }
    const auto known = std::to_string(sensors_.size()) + (sensors_.size() == 1 ? " sensor" : " sensors");
    const auto answering = std::ranges::count_if(sensors_, [](const auto& one) { return one->answers; });
    if (answering == 0) {
        return status(false, known + ", none answers");
    }
    const bool doAllAnswer = static_cast<std::size_t>(answering) == sensors_.size();
    return status(true, doAllAnswer ? known : std::to_string(answering) + " of " + known);
}

void HwmonSensors::learnIfOutdated() {
    const bool areChipsOutdated = chipFolder_.isOutdated();
    const bool areZonesOutdated = zoneFolder_.isOutdated();
    const bool areSuppliesOutdated = supplyFolder_.isOutdated();
    if (areChipsOutdated || areZonesOutdated || areSuppliesOutdated) {
        learn();
        isLearnt_ = true;
    }
}

void HwmonSensors::learn() {
    const auto found = findSensors(roots_, zones_.zones());
    std::vector<SensorSource> sources;
    std::ranges::transform(found, std::back_inserter(sources), &FoundSensor::source);

    SensorList sensors;
    std::shared_ptr<Device> device;
    const std::filesystem::path* deviceStatus = nullptr;
    for (const auto& [source, name, role] : sensorProducts(sources)) {
        const auto& sensor = found[source];
        if (sensor.runtimeStatus.empty()) {
            device.reset();
        } else if (!device || *deviceStatus != sensor.runtimeStatus) {
            device = std::make_shared<Device>(sensor.runtimeStatus); // the sensors of a chip stand together
        }
        deviceStatus = &sensor.runtimeStatus;
        sensors.push_back(std::make_shared<Sensor>(
            Sensor{.product = name,
                   .isStorage = role == SensorRole::storage,
                   .device = device,
                   .zone = sensor.zone,
                   .file = AttributeFile(sensor.file),
                   .unitsADegree = sensor.source.origin == SensorOrigin::supply ? tenths : thousandths,
                   .readAt = {}}));
        keepFormerRead(*sensors.back());
    }
    sensors_ = std::move(sensors);
}

bool HwmonSensors::isAwake(const Sensor& sensor) const {
    return !sensor.device || sensor.device->isAwake(clock_());
}

bool HwmonSensors::isResting(const Sensor& sensor) const {
    return sensor.isStorage && sensor.readAt && clock_() - *sensor.readAt < storagePeriod;
}

void HwmonSensors::keepFormerRead(Sensor& sensor) const {
    const auto former = std::ranges::find_if(sensors_, [&](const auto& known) {
        return known->file.path() == sensor.file.path() && known->zone == sensor.zone;
    });
    if (former != sensors_.end()) {
        sensor.readAt = (*former)->readAt;
        sensor.answers = (*former)->answers;
    }
}

} // namespace cindertop::linux_platform
