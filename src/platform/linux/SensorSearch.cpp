#include "platform/linux/SensorSearch.h"

#include "platform/linux/FileReading.h"
#include "support/Text.h"

#include <algorithm>
#include <optional>
#include <system_error>
#include <utility>

namespace cindertop::linux_platform {

namespace {

using Path = std::filesystem::path;

constexpr double tenths = 10;
constexpr double thousandths = 1000;

std::vector<std::string> namesIn(const Path& folder) {
    return listFolder(folder).value_or(std::vector<std::string>{});
}

bool hasScopeDevice(const Path& supply) {
    return readAttribute(supply / "scope") == "Device";
}

/// Mice and headsets are supplies too, and chargers, whose heat is not the battery's.
bool isSystemBattery(const Path& supply) {
    return !hasScopeDevice(supply) && readAttribute(supply / "type").value_or("Battery") == "Battery";
}

bool doesExist(const Path& file) {
    std::error_code ignored;
    return std::filesystem::exists(file, ignored);
}

std::string firstNameIn(const Path& folder) {
    const auto names = namesIn(folder);
    return names.empty() ? std::string() : names.front();
}

/// "nvme0" or "sda". The link leads to the drive itself, to its PCI function or to its SCSI device.
std::string driveName(const Path& device) {
    auto name = device.filename().string();
    if (name.empty() || name.starts_with("nvme")) {
        return name;
    }
    for (const auto* const kind : {"nvme", "block"}) {
        if (auto child = firstNameIn(device / kind); !child.empty()) {
            return child;
        }
    }
    return name;
}

/// A drive that is not known to have no platters may have some: asking it would spin them up.
bool mayRotate(const Path& device) {
    return device.empty() ||
           readInteger(device / "block" / firstNameIn(device / "block") / "queue/rotational") != 0;
}

/// Empty for a sensor without a label; none when its label cannot be read and so may say anything.
std::optional<std::string> labelOf(const Path& chip, int number) {
    const auto text = readTextFile(chip / ("temp" + std::to_string(number) + "_label"));
    if (!text) {
        return text.error() == FileError::missing ? std::optional<std::string>("") : std::nullopt;
    }
    return std::string(trimmingWhitespace(*text));
}

class Search {
public:
    Search(const Roots& roots, std::span<const ThermalZoneIdentity> zones)
        : sys_(roots.sys), zones_(zones), supplies_(namesIn(sys_ / "class/power_supply")) {}

    std::vector<FoundSensor> all() {
        for (const auto& name : namesIn(sys_ / "class/hwmon")) {
            addChip(name);
        }
        for (const auto& zone : zones_) {
            addZone(zone);
        }
        for (const auto& supply : supplies_) {
            addSupply(supply);
        }
        return std::move(found_);
    }

private:
    void addChip(const std::string& folderName) {
        const auto folder = sys_ / "class/hwmon" / folderName;
        const auto chip = readAttribute(folder / "name");
        if (!chip) {
            return;
        }
        const auto device = linkedFolder(folder / "device");
        if (isZoneCopy(*chip, device) || (*chip == "drivetemp" && mayRotate(device))) {
            return;
        }
        const auto supply = copiedSupply(*chip, device);
        if (supply && (hasOwnTemperature(*supply) || !isSystemBattery(*supply))) {
            return;
        }
        SensorSource source{.origin = supply ? SensorOrigin::supply : SensorOrigin::chip,
                            .chip = supply ? supply->filename().string() : *chip,
                            .label = {},
                            .device = *chip == "nvme" || *chip == "drivetemp" ? driveName(device)
                                                                              : device.filename().string(),
                            .group = folderName};
        for (const auto& fileName : namesIn(folder)) {
            const auto number = parseTemperatureInput(fileName);
            const auto label = number ? labelOf(folder, *number) : std::nullopt;
            if (label) {
                source.label = *label;
                source.channel = *number;
                found_.push_back({.source = source,
                                  .file = folder / fileName,
                                  .unitsADegree = thousandths,
                                  .zone = {},
                                  .power = device.empty() ? folder / "device/power" : device / "power"});
            }
        }
    }

    /// Older kernels give the copies no device.
    bool isZoneCopy(std::string_view chip, const Path& device) const {
        return device.empty() ? std::ranges::any_of(
                                    zones_, [&](const auto& type) { return isHwmonNameOf(chip, type); },
                                    &ThermalZoneIdentity::type)
                              : device.filename().string().starts_with("thermal_zone");
    }

    std::optional<Path> copiedSupply(std::string_view chip, const Path& device) const {
        if (!device.empty()) {
            return device.parent_path().filename() == "power_supply" ? std::optional(device) : std::nullopt;
        }
        const auto name =
            std::ranges::find_if(supplies_, [&](const auto& each) { return isHwmonNameOf(chip, each); });
        return name != supplies_.end() ? std::optional(sys_ / "class/power_supply" / *name) : std::nullopt;
    }

    static bool hasOwnTemperature(const Path& supply) { return doesExist(supply / "temp"); }

    void addZone(const ThermalZoneIdentity& zone) {
        if (std::ranges::find(supplies_, zone.type) != supplies_.end()) {
            return;
        }
        found_.push_back({.source = {.origin = SensorOrigin::zone,
                                     .chip = zone.type,
                                     .label = {},
                                     .device = {},
                                     .group = zone.name},
                          .file = {},
                          .unitsADegree = thousandths,
                          .zone = zone.name,
                          .power = {}});
    }

    void addSupply(const std::string& name) {
        const auto folder = sys_ / "class/power_supply" / name;
        if (!hasOwnTemperature(folder) || !isSystemBattery(folder)) {
            return;
        }
        found_.push_back(
            {.source =
                 {.origin = SensorOrigin::supply, .chip = name, .label = "temp", .device = {}, .group = name},
             .file = folder / "temp",
             .unitsADegree = tenths,
             .zone = {},
             .power = {}});
    }

    Path sys_;
    std::span<const ThermalZoneIdentity> zones_;
    std::vector<std::string> supplies_;
    std::vector<FoundSensor> found_;
};

} // namespace

std::vector<FoundSensor> findSensors(const Roots& roots, std::span<const ThermalZoneIdentity> zones) {
    return Search(roots, zones).all();
}

} // namespace cindertop::linux_platform
