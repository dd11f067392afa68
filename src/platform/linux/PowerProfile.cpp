#include "platform/linux/PowerProfile.h"

#include "platform/linux/FileReading.h"

#include <array>
#include <string_view>
#include <variant>

namespace cindertop::linux_platform {

namespace {

constexpr auto upowerName = "org.freedesktop.UPower.PowerProfiles";
constexpr auto hadessName = "net.hadess.PowerProfiles";

} // namespace

PowerProfile::PowerProfile(SystemBus& bus, const Roots& roots)
    : bus_(bus),
      upower_(bus, {.service = upowerName,
                    .path = "/org/freedesktop/UPower/PowerProfiles",
                    .interface = upowerName,
                    .member = "ActiveProfile"}),
      hadess_(bus, {.service = hadessName,
                    .path = "/net/hadess/PowerProfiles",
                    .interface = hadessName,
                    .member = "ActiveProfile"}),
      firmware_(roots.sys / "firmware/acpi/platform_profile") {}

bool PowerProfile::isSavingPower() {
    isAvailable_ = true;
    const std::array answers = {upower_.value(), hadess_.value()};
    static constexpr std::array names = {upowerName, hadessName};
    for (std::size_t index = 0; index < answers.size(); ++index) {
        const auto& answer = answers.at(index);
        if (const auto* const profile = answer ? std::get_if<std::string>(&*answer) : nullptr) {
            reason_ = names.at(index);
            return *profile == "power-saver";
        }
    }
    if (const auto profile = readAttribute(firmware_)) {
        reason_ = firmware_.string();
        return *profile == "low-power";
    }
    isAvailable_ = false;
    reason_ = bus_.handle() == nullptr ? "system bus not reachable; no platform profile"
                                       : "no power profile service answers; no platform profile";
    return false;
}

SourceStatus PowerProfile::status() const {
    return {.name = std::string(powerProfileSource), .isAvailable = isAvailable_, .reason = reason_};
}

} // namespace cindertop::linux_platform
