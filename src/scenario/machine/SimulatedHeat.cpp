#include "scenario/machine/SimulatedHeat.h"

namespace cindertop::simulated {

namespace {

constexpr std::string_view supportedArchitecture = "arm64";
constexpr TemperatureEventClient::Matching temperatureSensors{.primaryUsagePage = 0xFF00, .primaryUsage = 5};
constexpr std::int64_t temperatureEventType = 15;
constexpr std::uint32_t temperatureEventField = 15 << 16;

class SimulatedEvent final : public TemperatureEvent {
public:
    explicit SimulatedEvent(double celsius) : celsius_(celsius) {}

    double floatValue(std::uint32_t field) const override {
        return field == temperatureEventField ? celsius_ : 0; // an event has no other field
    }

private:
    double celsius_;
};

class SimulatedService final : public TemperatureService {
public:
    explicit SimulatedService(ScenarioSensor sensor) : sensor_(std::move(sensor)) {}

    std::unique_ptr<TemperatureEvent> copyEvent(std::int64_t type) const override {
        if (type != temperatureEventType || !sensor_.celsius) {
            return nullptr;
        }
        return std::make_unique<SimulatedEvent>(*sensor_.celsius);
    }

    std::optional<PropertyValue> copyProperty(std::string_view key) const override {
        if (key != "Product" || !sensor_.product) {
            return std::nullopt;
        }
        return *sensor_.product;
    }

private:
    ScenarioSensor sensor_;
};

class SimulatedClient final : public TemperatureEventClient {
public:
    explicit SimulatedClient(Timeline timeline) : timeline_(std::move(timeline)) {}

    void setMatching(const Matching& matching) override { matching_ = matching; }

    std::optional<Services> copyServices() override {
        const auto sensors = timeline_.frame().sensors;
        if (!sensors) {
            return std::nullopt;
        }
        Services services;
        if (matching_ == temperatureSensors) {
            for (const ScenarioSensor& sensor : *sensors) {
                services.push_back(std::make_unique<SimulatedService>(sensor));
            }
        }
        return services;
    }

private:
    Timeline timeline_;
    std::optional<Matching> matching_;
};

} // namespace

bool SimulatedTemperatureEvents::isSupported() const {
    return timeline_.scenario().machine.architecture == supportedArchitecture;
}

std::unique_ptr<TemperatureEventClient> SimulatedTemperatureEvents::createClient() {
    if (!timeline_.frame().sensors) {
        return nullptr;
    }
    return std::make_unique<SimulatedClient>(timeline_);
}

HeatSources SimulatedHeatSourceSurvey::findHeatSources() {
    const auto& frame = timeline_.frame();
    HeatSources found{
        .thermalState = frame.thermalState, .pressureSource = {}, .sensors = {}, .hasFan = false};
    found.hasFan = frame.meters && !frame.meters->fans.empty();
    if (frame.pressure) {
        found.pressureSource = "scenario";
    }
    if (!frame.sensors || !SimulatedTemperatureEvents(timeline_).isSupported()) {
        return found;
    }
    for (const auto& sensor : *frame.sensors) {
        if (sensor.celsius) {
            found.sensors.push_back(sensor.product.value_or(""));
        }
    }
    return found;
}

} // namespace cindertop::simulated
