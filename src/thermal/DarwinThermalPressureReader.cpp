#include "thermal/DarwinThermalPressureReader.h"

#include <string>
#include <utility>

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

} // namespace cindertop
