#include "thermal/ExperimentalSensorTemperatureProvider.h"

#include <optional>
#include <utility>
#include <variant>

namespace cindertop {

namespace {

constexpr std::int64_t temperatureEventType = 15;
constexpr std::uint32_t temperatureEventField = 15 * 65536; ///< the value of a temperature event
constexpr TemperatureEventClient::Matching temperatureSensors{
    .primaryUsagePage = 0xFF00, // the vendor's page
    .primaryUsage = 5,
};
constexpr std::string_view productKey = "Product";

/// The event comes first: a sensor that reports nothing is asked nothing else.
std::optional<TemperatureReading> readSensor(const TemperatureService& service) {
    const auto event = service.copyEvent(temperatureEventType);
    if (!event) {
        return std::nullopt;
    }
    const auto property = service.copyProperty(productKey);
    const auto* const product = property ? std::get_if<std::string>(&*property) : nullptr;
    if (product == nullptr || product->empty()) {
        return std::nullopt;
    }
    TemperatureReading reading{.id = *product,
                               .label = *product,
                               .celsius = event->floatValue(temperatureEventField),
                               .kind = inferred(*product),
                               .age = event->age()};
    return reading.isPlausible() ? std::optional(std::move(reading)) : std::nullopt;
}

} // namespace

ExperimentalSensorTemperatureProvider::ExperimentalSensorTemperatureProvider(TemperatureEvents& events)
    : events_(events) {}

std::vector<TemperatureReading> ExperimentalSensorTemperatureProvider::readTemperatures() {
    if (!events_.isSupported()) {
        return {};
    }
    const auto client = events_.createClient();
    if (!client) {
        return {};
    }
    client->setMatching(temperatureSensors);
    const auto services = client->copyServices();
    if (!services) {
        return {};
    }
    std::vector<TemperatureReading> readings;
    for (const auto& service : *services) {
        if (auto reading = readSensor(*service)) {
            readings.push_back(*std::move(reading));
        }
    }
    return readings;
}

} // namespace cindertop
