#include "cli/MachineText.h"

#include "support/Enumeration.h"
#include "support/Wording.h"
#include "terminal/ValueText.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace cindertop::cli {

namespace {

constexpr int eighthsOfCell = 8;

constexpr Wording powerSaving{", Low Power Mode on", ", Power Saver on"};

std::string_view nameOf(PowerSourceKind source) {
    switch (source) {
    case PowerSourceKind::acPower:
        return "AC power";
    case PowerSourceKind::batteryPower:
        return "battery power";
    case PowerSourceKind::upsPower:
        return "UPS power";
    case PowerSourceKind::offline:
        return "no power source";
    case PowerSourceKind::unknown:
        break;
    }
    return "source not available";
}

/// "unavailable" is a word for programs.
template <typename Enumeration>
std::string_view wordOf(Enumeration value) {
    return value == Enumeration::unavailable ? notAvailable : caseName(value);
}

std::string_view chargingText(const PowerContextSnapshot& power) {
    if (power.isFullyCharged.value_or(false)) {
        return "full";
    }
    if (!power.isCharging) {
        return "charging state not available";
    }
    return *power.isCharging ? "charging" : "not charging";
}

std::string batteryText(const PowerContextSnapshot& power, const TemperatureFormatter& temperatures,
                        Charset charset) {
    if (!power.isAvailable) {
        return "no battery found";
    }
    std::string text = "battery ";
    text += power.batteryLevelPercent ? std::to_string(*power.batteryLevelPercent) + " %"
                                      : "charge " + std::string(notAvailable);
    text += ", ";
    text += chargingText(power);
    if (const auto temperature = temperatures.text(power.batteryTemperatureCelsius)) {
        text += ", " + shown(*temperature, charset);
    }
    const auto level = power.batteryTemperatureLevel.value_or(BatteryTemperatureLevel::normal);
    if (level != BatteryTemperatureLevel::normal) {
        text += " (" + std::string(caseName(level)) + ")";
    }
    return text;
}

/// A bar of whole cells and one that is filled to an eighth.
Line blockBar(int eighths, int columns, Tone tone) {
    static constexpr std::array<std::string_view, eighthsOfCell> parts{"", "▏", "▎", "▍", "▌", "▋", "▊", "▉"};
    const auto part = parts.at(static_cast<std::size_t>(eighths % eighthsOfCell));
    std::string filled;
    for (int cell = 0; cell < eighths / eighthsOfCell; ++cell) {
        filled += "█";
    }
    filled += part;
    std::string rest;
    for (int cell = columnsOf(filled); cell < columns; ++cell) {
        rest += "░";
    }
    return {{filled, tone}, {rest, Tone::faint}};
}

Line asciiBar(int filled, int columns, Tone tone) {
    return {{"[" + std::string(static_cast<std::size_t>(filled), '#'), tone},
            {std::string(static_cast<std::size_t>(columns - filled), '.') + "]", Tone::faint}};
}

} // namespace

Tone toneOf(ThermalLevel level) {
    return static_cast<Tone>(static_cast<int>(Tone::normal) + static_cast<int>(level));
}

Line scoreLine(const ThermalScore& score) {
    if (!isHeatKnown(score)) {
        return {{std::string(noHeatReadings), Tone::strong}};
    }
    const auto tone = toneOf(score.level);
    return {{std::to_string(score.score), tone},
            {" of 100  ", Tone::faint},
            {std::string(label(score.level)), tone},
            {", " + std::string(caseName(score.trend))}};
}

Line scoreBar(const ThermalScore& score, int columns, Charset charset) {
    const auto tone = toneOf(score.level);
    if (charset == Charset::unicode) {
        const int cells = std::max(columns, 1);
        return blockBar(score.score * cells * eighthsOfCell / 100, cells, tone);
    }
    const int cells = std::max(columns - 2, 1);
    return asciiBar(score.score * cells / 100, cells, tone);
}

Line shareBar(double share, int columns, Tone tone, Charset charset) {
    const int steps = charset == Charset::unicode ? columns * eighthsOfCell : columns - 2;
    const int filled =
        std::clamp(static_cast<int>(std::lround(share * steps)), share > 0 ? 1 : 0, std::max(steps, 1));
    return charset == Charset::unicode ? blockBar(filled, columns, tone) : asciiBar(filled, steps, tone);
}

std::string thermalText(const ThermalScore& score) {
    return "state " + std::string(wordOf(score.systemState)) + ", pressure " +
           std::string(wordOf(score.pressureLevel));
}

std::string powerText(const PowerContextSnapshot& power, const TemperatureFormatter& temperatures,
                      Charset charset, OperatingSystem system) {
    auto text = std::string(nameOf(power.source)) + ", " + batteryText(power, temperatures, charset);
    if (power.isLowPowerModeEnabled) {
        text += powerSaving.in(system);
    }
    return text;
}

std::string displaysText(const DisplayContextSnapshot& displays) {
    if (!displays.isAvailable) {
        return std::string(notAvailable);
    }
    auto text = std::to_string(displays.activeDisplayCount) +
                " active: " + std::to_string(displays.builtInDisplayCount) + " built in, " +
                std::to_string(displays.externalDisplayCount) + " external";
    const auto unknown =
        displays.activeDisplayCount - displays.builtInDisplayCount - displays.externalDisplayCount;
    if (unknown > 0) {
        text += ", " + std::to_string(unknown) + " unknown";
    }
    if (displays.isProbableClamshell()) {
        text += " (lid probably closed)";
    }
    return text;
}

std::string pressureText(const SustainedThermalPressureSnapshot& pressure) {
    const auto seconds = pressure.activeDuration.count();
    if (seconds < 1) {
        return {};
    }
    return std::string(label(pressure.thresholdLevel)) + " or worse for " + durationText(seconds);
}

} // namespace cindertop::cli
