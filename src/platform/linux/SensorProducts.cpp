#include "platform/linux/SensorProducts.h"

#include "platform/linux/FileReading.h"
#include "support/Text.h"

#include <algorithm>
#include <array>
#include <utility>

namespace cindertop::linux_platform {

namespace {

constexpr std::size_t longestName = 64; // of chips, zones and labels; nothing known comes near

enum class When { always, withoutDie, withoutProcessorChip, withoutProcessor };

/// Patterns: "*" is any text, "#" a decimal number, "|" an alternative; letter case does not count. In a
/// product "#" is the label's number, NAME the chip without "-thermal", DEVICE the device.
struct ProductRow {
    SensorOrigin origin;
    std::string_view chip;
    std::string_view label;
    std::string_view product;
    SensorRole role;
    When when = When::always;
};

using enum SensorOrigin;
using enum SensorRole;

constexpr auto productRows = std::to_array<ProductRow>({
    {chip, "coretemp", "Package id #", "CPU Package #", processorChip},
    {chip, "coretemp", "Core #", "CPU Core #", processorChip},
    {chip, "k10temp|zenpower", "Tdie", "CPU Die", processorChip},
    {chip, "k10temp|zenpower", "Tctl", "CPU Control", processorChip, When::withoutDie},
    {chip, "k10temp|zenpower", "Tccd#", "CPU CCD #", processorChip},
    {chip, "k10temp", "", "CPU Control", processorChip}, // before Zen it has this sensor only, and no label
    {chip, "amdgpu|nouveau|xe|i915|gpu*", "edge", "GPU Edge", graphics},
    {chip, "amdgpu|nouveau|xe|i915|gpu*", "junction", "GPU Junction", graphics},
    {chip, "amdgpu|nouveau|xe|i915|gpu*", "mem", "GPU Memory", graphics},
    {chip, "amdgpu|nouveau|xe|i915|gpu*", "", "GPU", graphics},
    {chip, "xe", "pkg", "GPU Package", graphics},
    {chip, "xe", "vram", "GPU Memory", graphics},
    {zone, "gpu*", "", "GPU", graphics},
    {zone, "x86_pkg_temp", "", "CPU Package", processorZone, When::withoutProcessorChip},
    {zone, "cpu*|*core*-thermal", "", "CPU Cluster NAME", processorZone, When::withoutProcessorChip},
    {zone, "soc*", "", "SoC Zone", processorZone},
    {zone, "acpitz", "", "SoC Zone", processorZone, When::withoutProcessor},
    {chip, "nvme", "Composite", "SSD Composite (DEVICE)", storage},
    {chip, "nvme", "Sensor #", "SSD Sensor # (DEVICE)", storage},
    {chip, "drivetemp", "", "SSD or HDD drive (DEVICE)", storage},
    {chip, "macsmc_hwmon", "NAND Flash Temperature", "NAND Flash", storage},
    {chip, "macsmc_hwmon", "Battery Hotspot", "Battery Hotspot", battery},
    {chip, "macsmc_hwmon", "Charge Regulator Temp", "Charger Regulator", power},
    {supply, "*", "temp", "Battery", battery},
    {zone, "pm*-thermal", "", "PMU NAME", power},
    {zone, "VRM", "", "Power VRM", power},
    {chip, "VRM", "", "Power VRM", power},
    {zone, "TSKN|*skin*", "", "Skin", surface},
});

constexpr bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

constexpr char lowerAscii(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

std::string_view leadingDigits(std::string_view text) {
    const auto* const end = std::ranges::find_if_not(text, isDigit);
    return text.substr(0, static_cast<std::size_t>(end - text.begin()));
}

/// The number that "#" stands for, empty without "#"; none when the text does not match.
std::optional<std::string_view> matchOne(std::string_view pattern, std::string_view text) {
    std::string_view number;
    while (!pattern.empty()) {
        const char expected = pattern.front();
        pattern.remove_prefix(1);
        if (expected == '*') {
            for (std::size_t skipped = 0; skipped <= text.size(); ++skipped) {
                if (matchOne(pattern, text.substr(skipped))) {
                    return number;
                }
            }
            return std::nullopt;
        }
        if (expected == '#') {
            number = leadingDigits(text);
            if (number.empty()) {
                return std::nullopt;
            }
            text.remove_prefix(number.size());
        } else {
            if (text.empty() || lowerAscii(text.front()) != lowerAscii(expected)) {
                return std::nullopt;
            }
            text.remove_prefix(1);
        }
    }
    return text.empty() ? std::optional(number) : std::nullopt;
}

std::optional<std::string_view> match(std::string_view alternatives, std::string_view text) {
    for (;;) {
        const auto bar = alternatives.find('|');
        if (const auto number = matchOne(alternatives.substr(0, bar), text)) {
            return number;
        }
        if (bar == std::string_view::npos) {
            return std::nullopt;
        }
        alternatives.remove_prefix(bar + 1);
    }
}

std::string replaced(std::string text, std::string_view placeholder, std::string_view value) {
    if (const auto place = text.find(placeholder); place != std::string::npos) {
        text.replace(place, placeholder.size(), value);
    }
    return text;
}

std::string_view withoutThermal(std::string_view type) {
    for (const std::string_view ending : {"-thermal", "_thermal"}) {
        if (type.size() > ending.size() && type.ends_with(ending)) {
            type.remove_suffix(ending.size());
        }
    }
    return type;
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
        if (row.origin != source.origin || !match(row.chip, source.chip)) {
            continue;
        }
        if (const auto number = match(row.label, source.label)) {
            return Match{.row = &row, .number = *number};
        }
    }
    return std::nullopt;
}

std::string productName(const Match& match, const SensorSource& source) {
    // The device last: nothing is replaced inside it.
    auto name = replaced(std::string(match.row->product), "#", match.number);
    name = replaced(std::move(name), "NAME", repairedUtf8(withoutThermal(source.chip)));
    return replaced(std::move(name), "DEVICE", repairedUtf8(source.device));
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

std::vector<SensorProduct> sensorProducts(std::span<const SensorSource> sources) {
    std::vector<std::optional<Match>> matches;
    Present present;
    for (const auto& source : sources) {
        matches.push_back(rowOf(source));
        if (matches.back()) {
            present.add(*matches.back(), source);
        }
    }
    std::vector<SensorProduct> products;
    for (std::size_t index = 0; index < sources.size(); ++index) {
        const auto& match = matches[index];
        if (match && !present.leavesOut(*match, sources[index])) {
            products.push_back(
                {.source = index, .name = productName(*match, sources[index]), .role = match->row->role});
        }
    }
    return products;
}

bool isHwmonNameOf(std::string_view chip, std::string_view typeOrName) {
    return std::ranges::equal(chip, typeOrName,
                              [](char left, char right) { return left == (right == '-' ? '_' : right); });
}

std::optional<int> parseTemperatureInput(std::string_view fileName) {
    constexpr int mostSensors = 1000;
    const auto number = matchOne("temp#_input", fileName);
    const auto value = number ? parseInteger(*number) : std::nullopt;
    return value && *value < mostSensors ? std::optional(static_cast<int>(*value)) : std::nullopt;
}

} // namespace cindertop::linux_platform
