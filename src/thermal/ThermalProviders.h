#pragma once

#include "platform/Clock.h"
#include "platform/ProcessInformation.h"
#include "platform/TemperatureEvents.h"
#include "platform/ThermalPressureNotifications.h"
#include "platform/UnifiedLog.h"
#include "thermal/ThermalReading.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

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

/// Answers the thermal pressure. Any thread may ask, as far as the source of its reader allows it.
class DarwinThermalPressureProvider {
public:
    /// The source is first asked, and so the reader made, by the first read.
    explicit DarwinThermalPressureProvider(DarwinThermalPressureReader::Source reader);

    /// `unavailable` when there is no pressure to be had.
    ThermalPressureLevel readPressureLevel() const;

private:
    DarwinThermalPressureReader::Source reader_;
};

/// Reads what the system itself says about heat: its thermal state and pressure.
class SystemThermalStateProvider {
public:
    /// Both services must outlive the provider.
    SystemThermalStateProvider(const ProcessInformation& process, DarwinThermalPressureProvider pressure,
                               const Clock& clock);

    /// A reading without temperatures, data source `official`. What the system does not tell is
    /// `unavailable`.
    ThermalReading read() const;

private:
    const ProcessInformation& process_;
    DarwinThermalPressureProvider pressure_;
    const Clock& clock_;
};

/// Reads the temperature sensors. Any thread may ask.
class TemperatureSensorProviding {
public:
    virtual ~TemperatureSensorProviding() = default;
    /// Never fails: when nothing can be read, the list is empty.
    virtual std::vector<TemperatureReading> readTemperatures() = 0;
};

/// Reads the temperature sensors of the event system, afresh on every call. As many threads may ask at once
/// as the event system allows.
class ExperimentalSensorTemperatureProvider final : public TemperatureSensorProviding {
public:
    /// `events` must outlive the provider.
    explicit ExperimentalSensorTemperatureProvider(TemperatureEvents& events);

    /// In the system's order, without implausible values and nameless sensors. Sensors of one name each give
    /// a reading, with the same `id`. Where the event system is not supported it is left alone.
    std::vector<TemperatureReading> readTemperatures() override;

private:
    TemperatureEvents& events_;
};

} // namespace cindertop
