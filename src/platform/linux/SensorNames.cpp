#include "platform/linux/SensorNames.h"

#include "platform/linux/FileReading.h"
#include "platform/linux/SensorPatterns.h"
#include "support/Text.h"

#include <algorithm>
#include <array>
#include <map>
#include <set>
#include <string>
#include <utility>

namespace cindertop::linux_platform {

namespace {

constexpr std::size_t longestName = 64; // of chips, zones and labels; nothing known comes near

enum class When { always, withoutDie, withoutProcessorChip, withoutProcessor };

/// The patterns are those of `matchPattern`. In a product "#" is the label's number, NAME the chip without
/// "-thermal", DEVICE the device, and PACKAGE the processor's number and a blank, where there are several.
struct ProductRow {
    SensorOrigin origin;
    std::string_view chip;
    std::string_view label;
    std::string_view product;
    SensorRole role;
    When when = When::always;
    int channel = 0; ///< of a chip; 0 is any
};

using enum SensorOrigin;
using enum SensorRole;

constexpr std::string_view graphicsChips = "amdgpu|radeon|nouveau|xe|i915|gpu*";

constexpr auto productRows = std::to_array<ProductRow>({
    {chip, "coretemp", "Package id #|Physical id #", "CPU Package #", processorChip},
    {chip, "coretemp", "Core #", "CPU PACKAGECore #", processorChip},
    {chip, "k10temp|zenpower", "Tdie", "CPU Die", processorChip},
    {chip, "k10temp|zenpower", "Tctl", "CPU Control", processorChip, When::withoutDie},
    {chip, "k10temp|zenpower", "Tccd#", "CPU CCD #", processorChip},
    {chip, "k10temp", "", "CPU Control", processorChip}, // before Zen it has this sensor only, and no label
    {chip, "nct1008", "*", "CPU Cluster NAME", processorZone, When::withoutProcessorChip, 2},
    {chip, graphicsChips, "edge", "GPU Edge", graphics},
    {chip, graphicsChips, "junction", "GPU Junction", graphics},
    {chip, graphicsChips, "mem", "GPU Memory", graphics},
    {chip, graphicsChips, "", "GPU", graphics},
    {chip, "xe", "pkg", "GPU Package", graphics},
    {chip, "xe", "vram", "GPU Memory", graphics},
    {zone, "gpu*", "", "GPU", graphics},
    {zone, "x86_pkg_temp", "", "CPU Package", processorZone, When::withoutProcessorChip},
    {zone, "cpu*|*core*-thermal|bcm2835_thermal", "", "CPU Cluster NAME", processorZone,
     When::withoutProcessorChip},
    {zone, "soc*", "", "CPU Zone", processorZone},
    {zone, "acpitz", "", "CPU Zone", processorZone, When::withoutProcessor},
    {chip, "nvme", "Composite", "SSD Composite (DEVICE)", storage},
    {chip, "nvme", "Sensor #", "SSD Sensor # (DEVICE)", storage},
    {chip, "drivetemp", "", "SSD or HDD drive (DEVICE)", storage},
    {chip, "macsmc_hwmon", "NAND Flash Temperature", "NAND Flash", storage},
    {chip, "macsmc_hwmon", "Battery Hotspot", "Battery Hotspot", battery},
    {chip, "macsmc_hwmon", "Charge Regulator Temp", "Charger Regulator", power},
    {supply, "*", "temp", "Battery", battery},
    {chip, "BAT*|macsmc_battery", "temp", "Battery", battery},
    {chip, "steamdeck_hwmon", "Battery Temp", "Battery", battery},
    {zone, "pm*-thermal", "", "PMU NAME", power},
    {zone, "VRM", "", "Power VRM", power},
    {chip, "VRM", "", "Power VRM", power},
    {zone, "TSKN|*skin*", "", "Skin", surface},
});

std::string replaced(std::string text, std::string_view placeholder, std::string_view value) {
    if (const auto place = text.find(placeholder); place != std::string::npos) {
        text.replace(place, placeholder.size(), value);
    }
    return text;
}

struct Match {
    const ProductRow* row;
    std::string_view number;
};

std::optional<Match> rowOf(const SensorSource& source) {
    if (source.chip.size() > longestName || source.label.size() > longestName) {
        return std::nullopt;
    }
    for (const auto& row : productRows) {
        if (row.origin != source.origin || (row.channel != 0 && row.channel != source.channel) ||
            !matchPattern(row.chip, source.chip)) {
            continue;
        }
        if (const auto number = matchPattern(row.label, source.label)) {
            return Match{.row = &row, .number = *number};
        }
    }
    return std::nullopt;
}

/// The numbers of the processors that the chips of `coretemp` sit on.
class PackageNumbers {
public:
    void add(const Match& match, const SensorSource& source) {
        if (source.chip != "coretemp") {
            return;
        }
        if (match.row->product == "CPU Package #") {
            packages_[source.group] = match.number;
            labels_.insert(match.number);
            return;
        }
        // A processor without a sensor of its package has its number in the device's name.
        packages_.try_emplace(source.group, lastNumber(source.device));
        haveCoresTwice_ = !cores_.insert(match.number).second || haveCoresTwice_;
    }

    /// "1 " for a chip on the second processor of several, else empty.
    std::string prefixFor(const SensorSource& source) const {
        const auto package = packages_.find(source.group);
        const bool areSeveral = labels_.size() > 1 || (haveCoresTwice_ && packages_.size() > 1);
        return areSeveral && package != packages_.end() && !package->second.empty()
                   ? std::string(package->second) + " "
                   : std::string();
    }

private:
    std::map<std::string_view, std::string_view> packages_; ///< by the group of their chip
    std::set<std::string_view> labels_;
    std::set<std::string_view> cores_;
    bool haveCoresTwice_ = false;
};

std::string productName(const Match& match, const SensorSource& source, const PackageNumbers& packages) {
    // The device last: nothing is replaced inside it.
    auto name = replaced(std::string(match.row->product), "#", match.number);
    name = replaced(std::move(name), "PACKAGE", packages.prefixFor(source));
    name = replaced(std::move(name), "NAME", repairedUtf8(withoutThermal(source.chip)));
    return source.device.empty() ? replaced(std::move(name), " (DEVICE)", "")
                                 : replaced(std::move(name), "DEVICE", repairedUtf8(source.device));
}

/// What there is to choose from.
struct Present {
    std::vector<std::string_view> groupsWithDie;
    bool hasProcessorChip = false;
    bool hasProcessor = false; ///< also by its own zone, acpitz aside

    void add(const Match& match, const SensorSource& source) {
        if (match.row->product == "CPU Die") {
            groupsWithDie.push_back(source.group);
        }
        hasProcessorChip = hasProcessorChip || match.row->role == processorChip;
        hasProcessor = hasProcessor || match.row->role == processorChip ||
                       (match.row->role == processorZone && match.row->when != When::withoutProcessor);
    }

    bool leavesOut(const Match& match, const SensorSource& source) const {
        switch (match.row->when) {
        case When::always:
            return false;
        case When::withoutDie:
            return std::ranges::find(groupsWithDie, source.group) != groupsWithDie.end();
        case When::withoutProcessorChip:
            return hasProcessorChip;
        case When::withoutProcessor:
            return hasProcessor;
        }
        return false;
    }
};

} // namespace

std::vector<NamedSensor> namedSensors(std::span<const SensorSource> sources) {
    std::vector<std::optional<Match>> matches;
    Present present;
    PackageNumbers packages;
    for (const auto& source : sources) {
        matches.push_back(rowOf(source));
        if (matches.back()) {
            present.add(*matches.back(), source);
            packages.add(*matches.back(), source);
        }
    }
    std::vector<NamedSensor> products;
    for (std::size_t index = 0; index < sources.size(); ++index) {
        const auto& match = matches[index];
        if (match && !present.leavesOut(*match, sources[index])) {
            products.push_back({.source = index,
                                .name = productName(*match, sources[index], packages),
                                .role = match->row->role});
        }
    }
    makeNamesDistinct(products, sources);
    return products;
}

std::string_view withoutThermal(std::string_view type) {
    for (const std::string_view ending : {"-thermal", "_thermal", "-therm"}) {
        if (type.size() > ending.size() && type.ends_with(ending)) {
            type.remove_suffix(ending.size());
        }
    }
    return type;
}

bool isHwmonNameOf(std::string_view chip, std::string_view typeOrName) {
    return std::ranges::equal(chip, typeOrName,
                              [](char left, char right) { return left == (right == '-' ? '_' : right); });
}

std::optional<int> parseTemperatureInput(std::string_view fileName) {
    constexpr int mostSensors = 1000;
    const auto number = matchPattern("temp#_input", fileName);
    const auto value = number ? parseInteger(*number) : std::nullopt;
    return value && *value < mostSensors ? std::optional(static_cast<int>(*value)) : std::nullopt;
}

namespace {

using Group = std::vector<NamedSensor*>;

/// What can follow a name, the best first. A chip's name is its driver's and tells sensors of one driver
/// apart from those of another only; the last of these differs for any two sensors.
constexpr std::array<std::string (*)(const SensorSource&), 5> distinctions{
    [](const SensorSource& source) {
        return source.origin == SensorOrigin::chip ? std::string()
                                                   : std::string(lastNumber(withoutThermal(source.chip)));
    },
    [](const SensorSource& source) { return repairedUtf8(withoutThermal(source.chip)); },
    [](const SensorSource& source) { return std::string(trailingDigits(source.group)); },
    [](const SensorSource& source) { return source.group; },
    [](const SensorSource& source) { return source.group + "." + std::to_string(source.channel); },
};

bool areDistinct(const std::vector<std::string>& texts) {
    const std::set<std::string> different(texts.begin(), texts.end());
    return different.size() == texts.size() && !different.contains("");
}

void distinguish(const Group& group, std::span<const SensorSource> sources) {
    for (const auto distinction : distinctions) {
        std::vector<std::string> texts;
        for (const auto* const product : group) {
            texts.push_back(distinction(sources[product->source]));
        }
        if (!areDistinct(texts)) {
            continue;
        }
        for (std::size_t index = 0; index < group.size(); ++index) {
            group[index]->name += " " + texts[index];
        }
        return;
    }
}

bool distinguishOnce(std::vector<NamedSensor>& products, std::span<const SensorSource> sources) {
    std::map<std::string, Group> groups;
    for (auto& product : products) {
        groups[product.name].push_back(&product);
    }
    bool hasChanged = false;
    for (const auto& [name, group] : groups) {
        if (group.size() > 1) {
            distinguish(group, sources);
            hasChanged = true;
        }
    }
    return hasChanged;
}

} // namespace

void makeNamesDistinct(std::vector<NamedSensor>& products, std::span<const SensorSource> sources) {
    constexpr int enough = 4; // a longer name can collide again, but not for ever
    for (int round = 0; round < enough && distinguishOnce(products, sources); ++round) {
    }
}

} // namespace cindertop::linux_platform
