#pragma once

#include "cli/OffenderOrder.h"
#include "cpu/ProcessOffender.h"
#include "terminal/StyledText.h"

#include <limits>
#include <vector>

namespace cindertop::cli {

/// How much of the list a page has room for.
struct OffenderTableRoom {
    static constexpr int unlimited = std::numeric_limits<int>::max();

    int rows = unlimited;               ///< the heading included
    int childrenOfOffender = unlimited; ///< processes below each application
    OffenderOrder order{};              ///< of those that have room
};

/// Applications and groups, the busiest first, their processes indented below them: name, identifier or count
/// of processes, share of the whole machine and, where one is known, of the graphics. An offender with one
/// process is one row. When room is short, the busiest get a row each, and what is left goes to their
/// processes, shared out evenly. A list that is not ready is one row that says so.
std::vector<Line> offenderTable(const ProcessOffenderSnapshot& snapshot, const PageFormat& format,
                                const OffenderTableRoom& room);

} // namespace cindertop::cli
