#pragma once

#include "app/AppState.h"
#include "app/SnapshotJson.h"

namespace cindertop::agent {

/// Everything that the running program knows, as docs/json.md describes it: the machine as of the latest
/// tick, with the advice. While nothing is measured, everything of the machine is null.
Json agentJson(const AppState& state);

} // namespace cindertop::agent
