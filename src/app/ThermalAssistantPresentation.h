#pragma once

#include "support/Enumeration.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>

namespace cindertop {

/// What the status item and the popover say, derived from the published snapshots whenever it is asked for.
struct ThermalAssistantPresentation {
    enum class Status : std::uint8_t { normal, fair, serious, critical, paused };

    Status status{};
    std::optional<std::string> trendLabel;
    std::optional<std::string> menuBarTemperatureText;
    std::optional<std::string> popoverTemperatureText;
    std::optional<std::string> actionMessage;

    bool operator==(const ThermalAssistantPresentation&) const = default;
};

template <>
struct EnumerationTable<ThermalAssistantPresentation::Status> {
    using Status = ThermalAssistantPresentation::Status;
    static constexpr std::array cases{
        EnumerationCase{Status::normal, "normal"},   EnumerationCase{Status::fair, "fair"},
        EnumerationCase{Status::serious, "serious"}, EnumerationCase{Status::critical, "critical"},
        EnumerationCase{Status::paused, "paused"},
    };
};

} // namespace cindertop
