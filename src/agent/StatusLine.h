#pragma once

#include "app/AppState.h"
#include "cli/StyledText.h"

#include <string>

namespace cindertop::agent {

/// The state after a tick in one line: time, level, score, temperature, trend, the busiest application, and
/// the advice as far as it fits. `time` is the time of day as it is to be shown.
cli::Line statusLine(const AppState& state, const std::string& time, const cli::PageFormat& format);

} // namespace cindertop::agent
