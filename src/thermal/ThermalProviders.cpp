#include "thermal/ThermalProviders.h"

#include <optional>
#include <string>
#include <utility>
#include <variant>

namespace cindertop {

namespace {

constexpr std::string_view logCategory = "thermal";

} // namespace

DarwinThermalPressureReader&
DarwinThermalPressureReader::shared(const std::shared_ptr<ThermalPressureNotifications>& notifications,
                                    const std::shared_ptr<UnifiedLog>& log) {
    static DarwinThermalPressureReader reader(notifications, log);
    return reader;
}

DarwinThermalPressureReader::Source
DarwinThermalPressureReader::sharedOnFirstUse(std::shared_ptr<ThermalPressureNotifications> notifications,
                                              std::shared_ptr<UnifiedLog> log) {
    return [notifications = std::move(notifications),
            log = std::move(log)]() -> DarwinThermalPressureReader& { return shared(notifications, log); };
}

DarwinThermalPressureReader::Source
DarwinThermalPressureReader::ownOnFirstUse(std::shared_ptr<ThermalPressureNotifications> notifications,
                                           std::shared_ptr<UnifiedLog> log) {
    struct Kept {
        std::once_flag once;
        std::optional<DarwinThermalPressureReader> reader;
    };

    return [notifications = std::move(notifications), log = std::move(log),
            kept = std::make_shared<Kept>()]() -> DarwinThermalPressureReader& {
        std::call_once(kept->once, [&] { kept->reader.emplace(notifications, log); });
        return *kept->reader;
    };
}

DarwinThermalPressureReader::DarwinThermalPressureReader(
    std::shared_ptr<ThermalPressureNotifications> notifications, std::shared_ptr<UnifiedLog> log)
    : notifications_(std::move(notifications)), log_(std::move(log)) {
    const std::scoped_lock lock(lock_);
    const auto registration = notifications_->registerCheck(thermalPressureNotificationName);
    isRegistered_ = registration.status == 0;
    if (isRegistered_) {
        token_ = registration.token;
    }
}

DarwinThermalPressureReader::~DarwinThermalPressureReader() {
    const auto wasRegistered = [this] {
        const std::scoped_lock lock(lock_);
        return std::exchange(isRegistered_, false);
    }();
    if (wasRegistered) {
        notifications_->cancel(token_);
    }
}

std::optional<ThermalPressureLevel> DarwinThermalPressureReader::currentLevel() {
    const std::scoped_lock lock(lock_);
    if (!isRegistered_) {
        return std::nullopt;
    }
    const auto state = notifications_->state(token_);
    if (state.status != 0) {
        return std::nullopt;
    }
    const auto level = fromDarwinState(state.raw);
    logRawStateIfChanged(state.raw, level);
    return level;
}

void DarwinThermalPressureReader::logRawStateIfChanged(std::uint64_t raw, ThermalPressureLevel level) {
    if (lastLoggedRawState_ == raw) {
        return;
    }
    lastLoggedRawState_ = raw;
    if (level == ThermalPressureLevel::unavailable) {
        log_->write(UnifiedLogLevel::error, unifiedLogSubsystem, logCategory,
                    "Unknown Darwin thermal pressure raw state: " + std::to_string(raw));
        return;
    }
    log_->write(UnifiedLogLevel::info, unifiedLogSubsystem, logCategory,
                "Darwin thermal pressure raw state: " + std::to_string(raw) + " -> " +
                    std::string(caseName(level)));
}

DarwinThermalPressureProvider::DarwinThermalPressureProvider(DarwinThermalPressureReader::Source reader)
    : reader_(std::move(reader)) {}

ThermalPressureLevel DarwinThermalPressureProvider::readPressureLevel() const {
    return reader_().currentLevel().value_or(ThermalPressureLevel::unavailable);
}

SystemThermalStateProvider::SystemThermalStateProvider(const ProcessInformation& process,
                                                       DarwinThermalPressureProvider pressure,
                                                       const Clock& clock)
    : process_(process), pressure_(std::move(pressure)), clock_(clock) {}

ThermalReading SystemThermalStateProvider::read() const {
    const auto systemState = fromProcessState(process_.thermalState());
    const auto pressureLevel = pressure_.readPressureLevel();
    return {.systemState = systemState,
            .pressureLevel = pressureLevel,
            .temperatures = {},
            .dataSource = ThermalDataSource::official,
            .measuredAt = clock_.now()};
}

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
                               .age = event->age(),
                               .limits = event->limits()};
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
