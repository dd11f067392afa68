#pragma once

#include "support/Enumeration.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>

namespace cindertop {

/// What the status item and the popover say, derived from the published snapshots whenever it is asked for.
struct ThermalAssistantPresentation {
    /// Behind the levels, which have the numbers of ThermalBand, stand the states in which there is none:
    /// paused by the user, before the terms are accepted, before the first tick, and where nothing tells the
    /// heat. The last three are told on Linux only.
    enum class Status : std::uint8_t {
        normal,
        fair,
        serious,
        critical,
        paused,
        notMonitoring,
        measuring,
        noHeatReadings
    };

    Status status{};
    std::optional<std::string> trendLabel;
    std::optional<std::string> menuBarTemperatureText;
    std::optional<std::string> popoverTemperatureText;
    std::optional<std::string> actionMessage;

    bool operator==(const ThermalAssistantPresentation&) const = default;
};

/// Only a level says how hot the machine is.
constexpr bool isLevel(ThermalAssistantPresentation::Status status) {
    return status <= ThermalAssistantPresentation::Status::critical;
}

template <>
struct EnumerationTable<ThermalAssistantPresentation::Status> {
    using Status = ThermalAssistantPresentation::Status;
    static constexpr std::array cases{
        EnumerationCase{Status::normal, "normal"},
        EnumerationCase{Status::fair, "fair"},
        EnumerationCase{Status::serious, "serious"},
        EnumerationCase{Status::critical, "critical"},
        EnumerationCase{Status::paused, "paused"},
        EnumerationCase{Status::notMonitoring, "notMonitoring"},
        EnumerationCase{Status::measuring, "measuring"},
        EnumerationCase{Status::noHeatReadings, "noHeatReadings"},
    };
};

} // namespace cindertop
