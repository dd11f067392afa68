#pragma once

#include <cstdint>
#include <string_view>

namespace cindertop {

/// The name under which the system keeps its thermal pressure.
inline constexpr std::string_view thermalPressureNotificationName = "com.apple.system.thermalpressurelevel";

/// The system's thermal-pressure state, behind a registration. Status 0 is success.
class ThermalPressureNotifications {
public:
    struct Registration {
        std::uint32_t status;
        std::int32_t token; ///< meaningful with status 0 only
    };

    struct State {
        std::uint32_t status;
        std::uint64_t raw; ///< meaningful with status 0 only
    };

    virtual ~ThermalPressureNotifications() = default;
    virtual Registration registerCheck(std::string_view name) = 0;
    virtual State state(std::int32_t token) = 0;
    virtual void cancel(std::int32_t token) = 0;
};

} // namespace cindertop
