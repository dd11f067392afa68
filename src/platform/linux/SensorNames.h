#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace cindertop::linux_platform {

/// Where a temperature is read from.
enum class SensorOrigin { chip, zone, supply };

/// What a sensor sits on, as far as the choice between sensors needs it.
enum class SensorRole { processorChip, processorZone, graphics, storage, battery, power, surface };

/// One temperature as the kernel shows it. Texts are what the files say, without white space around them.
struct SensorSource {
    SensorOrigin origin = SensorOrigin::chip;
    std::string chip;   ///< name of the hwmon chip, type of the zone, name of the supply
    std::string label;  ///< empty without one; "temp" for a supply
    std::string device; ///< of storage and processors, for example "nvme0", "sda" or "coretemp.0"
    std::string group;  ///< tells apart several chips or zones of one name: "hwmon2", "thermal_zone0", "BAT1"
    int channel = 1;    ///< tells apart the sensors of a chip

    bool operator==(const SensorSource&) const = default;
};

struct NamedSensor {
    std::size_t source; ///< index of the source it was made from
    std::string
        name; ///< chosen so that its words tell the kind of sensor: "CPU Core 3", "SSD Composite (nvme0)"
    SensorRole role;

    bool operator==(const NamedSensor&) const = default;
};

/// The sensors worth showing, in the order of their sources, no two of one name. Sources that stand in for
/// better ones are left out where the better ones exist; unknown chips, Wi-Fi, network, memory and board
/// sensors always are.
std::vector<NamedSensor> namedSensors(std::span<const SensorSource> sources);

/// A zone's type without the "-thermal" that most end with.
std::string_view withoutThermal(std::string_view type);

/// Whether the hwmon device `chip` can be the copy that the kernel makes of a zone of this type, or of a
/// supply of this name: hwmon names have no dashes.
bool isHwmonNameOf(std::string_view chip, std::string_view typeOrName);

/// The M of "tempM_input"; none for any other file.
std::optional<int> parseTemperatureInput(std::string_view fileName);

/// Tells sensors of one name apart: a number or a name of their own follows it ("GPU 3", "CPU Zone 1").
void makeNamesDistinct(std::vector<NamedSensor>& products, std::span<const SensorSource> sources);

} // namespace cindertop::linux_platform
