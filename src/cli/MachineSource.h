#pragma once

#include "app/MachineJsonReader.h"

namespace cindertop::cli {

/// Where the pages have their facts from.
class MachineSource {
public:
    virtual ~MachineSource() = default;

    /// The machine now; may measure for a moment.
    virtual MachineReport look() = 0;
    /// The machine at the next tick of a watch.
    virtual MachineReport next() = 0;
};

} // namespace cindertop::cli
