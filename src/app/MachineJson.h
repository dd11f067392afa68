#pragma once

#include "app/MachineSnapshot.h"
#include "app/SnapshotJson.h"

namespace cindertop {

/// A live machine as one object, with absolute times: seconds since the Unix epoch.
Json machineJson(const MachineSnapshot& snapshot);

/// The processes of a live machine alone.
Json offendersJson(const MachineSnapshot& snapshot);

} // namespace cindertop
