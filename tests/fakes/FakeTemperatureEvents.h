#pragma once

#include "platform/TemperatureEvents.h"

#include <utility>

namespace cindertop::fakes {

struct FakeSensor {
    std::optional<PropertyValue> product;
    std::optional<double> celsius; ///< absent: no event
};

/// Sensors that answer to the temperature event and its field, and to nothing else.
class FakeTemperatureEvents final : public TemperatureEvents {
public:
    bool supported = true;
    bool hasClient = true;
    bool hasServices = true;
    std::vector<FakeSensor> sensors;
    int clientsCreated = 0;
    std::optional<TemperatureEventClient::Matching> lastMatching;
    bool isObserved = false;

    void setObserved(bool observed) override { isObserved = observed; }

    bool isSupported() const override { return supported; }

    std::unique_ptr<TemperatureEventClient> createClient() override {
        ++clientsCreated;
        return hasClient ? std::make_unique<Client>(*this) : nullptr;
    }

private:
    class Event final : public TemperatureEvent {
    public:
        explicit Event(double celsius) : celsius_(celsius) {}

        double floatValue(std::uint32_t field) const override { return field == 983'040 ? celsius_ : -1'000; }

    private:
        double celsius_;
    };

    class Service final : public TemperatureService {
    public:
        explicit Service(FakeSensor sensor) : sensor_(std::move(sensor)) {}

        std::unique_ptr<TemperatureEvent> copyEvent(std::int64_t type) const override {
            return type == 15 && sensor_.celsius ? std::make_unique<Event>(*sensor_.celsius) : nullptr;
        }

        std::optional<PropertyValue> copyProperty(std::string_view key) const override {
            return key == "Product" ? sensor_.product : std::nullopt;
        }

    private:
        FakeSensor sensor_;
    };

    class Client final : public TemperatureEventClient {
    public:
        explicit Client(FakeTemperatureEvents& events) : events_(events) {}

        void setMatching(const Matching& matching) override { events_.lastMatching = matching; }

        std::optional<Services> copyServices() override {
            if (!events_.hasServices) {
                return std::nullopt;
            }
            Services services;
            for (const auto& sensor : events_.sensors) {
                services.push_back(std::make_unique<Service>(sensor));
            }
            return services;
        }

    private:
        FakeTemperatureEvents& events_;
    };
};

} // namespace cindertop::fakes
