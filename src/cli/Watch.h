#pragma once

#include "cli/MachineSource.h"
#include "cli/WatchEvents.h"
#include "cli/WatchPrinters.h"

#include <expected>
#include <optional>

namespace cindertop::cli {

/// Samples and shows until something ends it, as often as the heat recommends or the user wants.
class Watch {
public:
    /// The signal that ended it; none when the user did.
    using End = std::expected<std::optional<int>, WriteError>;

    /// All three must outlive the watch. `interval` is the user's wish instead of what the heat recommends.
    Watch(MachineSource& machine, WatchEvents& events, WatchPrinter& printer,
          std::optional<Seconds> interval = std::nullopt)
        : machine_(machine), events_(events), printer_(printer), interval_(interval) {}

    End run();

private:
    /// Waits for the next tick; another wake-up ends the watch.
    std::expected<Wake, WriteError> pause(const MachineReport& report);
    WriteResult show(const MachineReport& report);

    MachineSource& machine_;
    WatchEvents& events_;
    WatchPrinter& printer_;
    std::optional<Seconds> interval_;
};

} // namespace cindertop::cli
