#include "platform/linux/FirmwareLimits.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace cindertop::linux_platform {

namespace {

struct FirmwareRow {
    std::string_view compatible;
    MilliCelsius limit;
};

constexpr std::array firmwareRows{
    FirmwareRow{"brcm,bcm2711", milliCelsius(80)},
    FirmwareRow{"brcm,bcm2712", milliCelsius(80)},
};

} // namespace

std::optional<MilliCelsius> firmwareLimit(const std::vector<std::string>& compatible) {
    for (const auto& row : firmwareRows) {
        if (std::ranges::find(compatible, row.compatible) != compatible.end()) {
            return row.limit;
        }
    }
    return std::nullopt;
}

} // namespace cindertop::linux_platform
