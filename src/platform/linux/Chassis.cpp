#include "platform/linux/Chassis.h"

#include "platform/linux/FileReading.h"
#include "support/Text.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace cindertop::linux_platform {

std::optional<bool> doesSmbiosChassisFold(std::string_view chassisType) {
    constexpr std::int64_t unknown = 2; // and 1 is "other"
    constexpr std::array<std::int64_t, 5> withLid{8, 9, 10, 14, 31};
    const auto number = parseInteger(chassisType);
    if (!number || *number <= unknown) {
        return std::nullopt;
    }
    return std::ranges::find(withLid, *number) != withLid.end();
}

std::optional<bool> doesDeviceTreeChassisFold(std::string_view chassisType) {
    const auto word = untilZeroByte(chassisType);
    return word.empty() ? std::nullopt : std::optional(word == "laptop" || word == "convertible");
}

std::optional<bool> doesChassisFold(const Roots& roots) {
    return readAttribute(roots.sys / "class/dmi/id/chassis_type")
        .and_then(doesSmbiosChassisFold)
        .or_else([&] {
            return readAttribute(roots.proc / "device-tree/chassis-type").and_then(doesDeviceTreeChassisFold);
        });
}

} // namespace cindertop::linux_platform
