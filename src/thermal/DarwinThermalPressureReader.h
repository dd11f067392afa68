#pragma once

#include "platform/ThermalPressureNotifications.h"
#include "platform/UnifiedLog.h"
#include "thermal/ThermalPressureLevel.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>

namespace cindertop {

/// Holds the registration for the system's thermal pressure and logs each change of its raw state once. Any
/// thread may ask. The reader shares its two services, so that its end, which may be the end of the process,
/// still finds them alive.
class DarwinThermalPressureReader {
public:
    /// Yields a reader; the first call makes it.
    using Source = std::function<DarwinThermalPressureReader&()>;

    /// The one reader of the process: made on the first call, from its services, and never replaced.
    static DarwinThermalPressureReader&
    shared(const std::shared_ptr<ThermalPressureNotifications>& notifications,
           const std::shared_ptr<UnifiedLog>& log);

    /// Yields `shared`.
    static Source sharedOnFirstUse(std::shared_ptr<ThermalPressureNotifications> notifications,
                                   std::shared_ptr<UnifiedLog> log);

    /// Yields a reader of its own, for a machine that is played; copies of the source yield the same one.
    static Source ownOnFirstUse(std::shared_ptr<ThermalPressureNotifications> notifications,
                                std::shared_ptr<UnifiedLog> log);

    /// Registers, once: a registration that fails is never tried again. Neither service may be null.
    DarwinThermalPressureReader(std::shared_ptr<ThermalPressureNotifications> notifications,
                                std::shared_ptr<UnifiedLog> log);
    ~DarwinThermalPressureReader();
    DarwinThermalPressureReader(const DarwinThermalPressureReader&) = delete;
    DarwinThermalPressureReader& operator=(const DarwinThermalPressureReader&) = delete;

    /// None without a registration or when the query fails; `unavailable` for a raw state that is not known.
    std::optional<ThermalPressureLevel> currentLevel();

private:
    /// Called with the lock held, so that all threads see one record of what was logged last.
    void logRawStateIfChanged(std::uint64_t raw, ThermalPressureLevel level);

    std::shared_ptr<ThermalPressureNotifications> notifications_;
    std::shared_ptr<UnifiedLog> log_;
    std::mutex lock_; ///< guards what follows
    std::int32_t token_ = 0;
    bool isRegistered_ = false;
    std::optional<std::uint64_t> lastLoggedRawState_;
};

} // namespace cindertop
