#pragma once

#include "cpu/ProcessOffender.h"
#include "support/Enumeration.h"
#include "support/Instant.h"

#include <array>
#include <vector>

namespace cindertop {

enum class ProcessOffenderSnapshotState {
    unavailable, ///< the processes could not be listed
    collecting,  ///< one census taken, nothing to compare it with yet
    ready,
};

template <>
struct EnumerationTable<ProcessOffenderSnapshotState> {
    using enum ProcessOffenderSnapshotState;
    static constexpr std::array cases{
        EnumerationCase{unavailable, "unavailable"},
        EnumerationCase{collecting, "collecting"},
        EnumerationCase{ready, "ready"},
    };
};

/// Who used the CPU between the last two censuses.
struct ProcessOffenderSnapshot {
    ProcessOffenderSnapshotState state{ProcessOffenderSnapshotState::unavailable};
    std::vector<ProcessOffender> offenders; ///< the visible ones, in display order
    bool isIndexingOrSetupLikely{};         ///< indexing or setup runs hard enough to matter
    Instant measuredAt{unixEpoch};

    /// Nothing measured yet.
    static const ProcessOffenderSnapshot& empty();
    bool operator==(const ProcessOffenderSnapshot&) const = default;
};

} // namespace cindertop
