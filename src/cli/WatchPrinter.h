#pragma once

#include "app/MachineJsonReader.h"
#include "cli/Output.h"

namespace cindertop::cli {

/// Shows the ticks of a watch.
class WatchPrinter {
public:
    virtual ~WatchPrinter() = default;
    virtual WriteResult show(const MachineReport& report) = 0;
    /// The place of output has another size; the next `show` fits it.
    virtual void resize() = 0;
    /// Stops the program until the shell continues it; the next `show` draws anew.
    virtual void suspend() = 0;
};

} // namespace cindertop::cli
