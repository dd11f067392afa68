#pragma once

#include "cli/Arguments.h"
#include "cli/MachineSource.h"
#include "persistence/AppSettings.h"
#include "support/TemperatureText.h"
#include "support/Wording.h"
#include "terminal/Output.h"
#include "terminal/TerminalTraits.h"

#include <expected>
#include <functional>
#include <optional>

namespace cindertop::cli {

/// What the commands work with. Everything must outlive the call.
struct CommandEnvironment {
    MachineSource& machine;
    Output& output;
    std::function<TerminalTraits()> terminal; ///< asked again when the window changes
    TemperatureFormatter temperatures;
    OperatingSystem system; ///< of the machine
    RecommendationVerbosity verbosity{};
};

/// Measures for a moment and shows everything.
WriteResult showStatus(CommandEnvironment& environment, Format format);

/// Measures for a moment and shows the applications.
WriteResult showOffenders(CommandEnvironment& environment, Format format);

/// Whether a watch redraws one screen instead of writing lines.
bool isShownOnScreen(Format format, const TerminalTraits& terminal);

struct WatchWishes {
    Format format{};
    std::optional<Seconds> interval{}; ///< none: as often as the heat recommends
    OffenderOrder order{};             ///< on a screen
};

/// Shows tick after tick. The answer is the signal that ended it, none when the user did.
std::expected<std::optional<int>, WriteError> watch(CommandEnvironment& environment,
                                                    const WatchWishes& wishes);

} // namespace cindertop::cli
