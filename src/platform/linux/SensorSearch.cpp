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

std::vector<std::string> namesIn(const Path& folder) {
    return listFolder(folder).value_or(std::vector<std::string>{});
}

/// Where the `device` link of a hwmon device leads; empty without one.
Path parentDevice(const Path& chip) {
    std::error_code error;
    auto device = std::filesystem::canonical(chip / "device", error);
    return error ? Path() : device;
}

bool isCopy(std::string_view chip, const Path& device, std::span<const ThermalZoneIdentity> zones,
            std::span<const std::string> supplies) {
    if (!device.empty()) {
        return device.filename().string().starts_with("thermal_zone") ||
               device.parent_path().filename() == "power_supply";
    }
    // Older kernels give the copy no device.
    const auto isCopied = [&](std::string_view name) { return isHwmonNameOf(chip, name); };
    return std::ranges::any_of(zones, isCopied, &ThermalZoneIdentity::type) ||
           std::ranges::any_of(supplies, isCopied);
}

std::string firstNameIn(const Path& folder) {
    const auto names = namesIn(folder);
    return names.empty() ? std::string() : names.front();
}

/// "nvme0" or "sda". The link leads to the drive itself, to its PCI function or to its SCSI device.
std::string driveName(const Path& device) {
    auto name = device.filename().string();
    if (name.starts_with("nvme")) {
        return name;
    }
    for (const auto* const kind : {"nvme", "block"}) {
        if (auto child = firstNameIn(device / kind); !child.empty()) {
            return child;
        }
    }
    return name;
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
        const auto device = parentDevice(folder);
        if (isCopy(*chip, device, zones_, supplies_)) {
            return;
        }
        const bool isDrive = *chip == "nvme" || *chip == "drivetemp";
        const SensorSource common{.origin = SensorOrigin::chip,
                                  .chip = *chip,
                                  .label = {},
                                  .device = isDrive ? driveName(device) : std::string(),
                                  .group = folderName};
        for (const auto& fileName : namesIn(folder)) {
            const auto number = parseTemperatureInput(fileName);
            const auto label = number ? labelOf(folder, *number) : std::nullopt;
            if (label) {
                auto source = common;
                source.label = *label;
                found_.push_back({.source = std::move(source),
                                  .file = folder / fileName,
                                  .zone = {},
                                  .runtimeStatus = folder / "device/power/runtime_status"});
            }
        }
    }

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
                          .zone = zone.name,
                          .runtimeStatus = {}});
    }

    /// Mice and headsets are supplies too (scope Device), and chargers, whose heat is not the battery's.
    void addSupply(const std::string& name) {
        const auto folder = sys_ / "class/power_supply" / name;
        std::error_code ignored;
        if (!std::filesystem::exists(folder / "temp", ignored) ||
            readAttribute(folder / "scope") == "Device" ||
            readAttribute(folder / "type").value_or("Battery") != "Battery") {
            return;
        }
        found_.push_back(
            {.source =
                 {.origin = SensorOrigin::supply, .chip = name, .label = "temp", .device = {}, .group = name},
             .file = folder / "temp",
             .zone = {},
             .runtimeStatus = {}});
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
