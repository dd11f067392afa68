#pragma once

#include "app/MachineSampler.h"
#include "persistence/AppSettings.h"
#include "support/TemperatureText.h"
#include "support/Wording.h"
#include "terminal/StyledText.h"

#include <string>
#include <string_view>
#include <vector>

namespace cindertop::cli {

/// How one page is written.
struct PageStyle {
    PageFormat format;
    TemperatureFormatter temperatures;
    OperatingSystem system{};            ///< decides the wording
    RecommendationVerbosity verbosity{}; ///< of the agent's advice
};

/// Columns of the labels in front of the facts.
inline constexpr int labelColumns = 14;

/// A label and what there is to say, over as many lines as it needs; nothing to say needs none.
std::vector<Line> fact(std::string_view label, std::string_view text, const PageStyle& style);

/// State, pressure, how long it lasts, and the temperature that counts, or why there is none.
std::vector<Line> thermalFacts(const MachineSnapshot& snapshot, const PageStyle& style);

/// Power, displays and the processor's share.
std::vector<Line> surroundingFacts(const MachineSnapshot& snapshot, const PageStyle& style);

/// What holds the processor back, watts and fans, as far as the machine tells them.
std::vector<Line> hardwareFacts(const MachineSnapshot& snapshot, const PageStyle& style);

/// Every sensor, the one that counts first, the others by their kind, in as many columns as the page has room
/// for.
std::vector<Line> sensorTable(const MachineSnapshot& snapshot, const PageStyle& style);

/// "12.4 %", "measuring" before there is an interval, or "not available".
std::string cpuText(const MachineSnapshot& snapshot);

} // namespace cindertop::cli
