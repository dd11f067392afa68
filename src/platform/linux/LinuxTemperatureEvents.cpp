#include "platform/linux/LinuxTemperatureEvents.h"

#include <chrono>
#include <memory>
#include <string>
#include <utility>

namespace cindertop::linux_platform {

namespace {

constexpr TemperatureEventClient::Matching temperatureSensors{.primaryUsagePage = 65280, .primaryUsage = 5};
constexpr std::int64_t temperatureType = 15;
constexpr std::uint32_t temperatureField = 983040; // temperatureType × 65536
constexpr std::string_view productKey = "Product";

class Event : public TemperatureEvent {
public:
    explicit Event(HwmonSensors::Temperature temperature) : temperature_(temperature) {}

    double floatValue(std::uint32_t field) const override {
        return field == temperatureField ? temperature_.celsius : 0;
    }

    std::chrono::nanoseconds age() const override { return temperature_.age; }

    TemperatureLimits limits() const override { return temperature_.limits; }

private:
    HwmonSensors::Temperature temperature_;
};

class Service : public TemperatureService {
public:
    Service(HwmonSensors& sensors, std::shared_ptr<HwmonSensors::Sensor> sensor)
        : sensors_(sensors), sensor_(std::move(sensor)) {}

    std::unique_ptr<TemperatureEvent> copyEvent(std::int64_t type) const override {
        if (type != temperatureType) {
            return nullptr;
        }
        const auto temperature = sensors_.temperature(*sensor_);
        return temperature ? std::make_unique<Event>(*temperature) : nullptr;
    }

    std::optional<PropertyValue> copyProperty(std::string_view key) const override {
        return key == productKey ? std::optional<PropertyValue>(HwmonSensors::product(*sensor_))
                                 : std::nullopt;
    }

private:
    HwmonSensors& sensors_;
    std::shared_ptr<HwmonSensors::Sensor> sensor_;
};

class Client : public TemperatureEventClient {
public:
    explicit Client(HwmonSensors& sensors) : sensors_(sensors) {}

    void setMatching(const Matching& matching) override { matching_ = matching; }

    std::optional<Services> copyServices() override {
        Services services;
        if (matching_ == temperatureSensors) {
            for (auto& sensor : sensors_.list()) {
                services.push_back(std::make_unique<Service>(sensors_, std::move(sensor)));
            }
        }
        return services;
    }

private:
    HwmonSensors& sensors_;
    std::optional<Matching> matching_;
};

} // namespace

void LinuxTemperatureEvents::setObserved(bool isObserved) {
    sensors_.setObserved(isObserved);
}

std::unique_ptr<TemperatureEventClient> LinuxTemperatureEvents::createClient() {
    return std::make_unique<Client>(sensors_);
}

} // namespace cindertop::linux_platform
