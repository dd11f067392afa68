#pragma once

#include "cli/SignalDescriptor.h"

#include <QSocketNotifier>
#include <functional>

namespace cindertop::agent {

/// Turns the wish to end this program (SIGTERM, SIGINT, SIGHUP) into a call on the main thread. Made before
/// any thread starts; the notifier needs the event loop.
class TerminationSignals {
public:
    explicit TerminationSignals(std::function<void()> onTermination);

    /// Readable once the wish is there.
    int descriptor() const { return signals_.descriptor(); }

private:
    cli::SignalDescriptor signals_;
    QSocketNotifier notifier_;
};

} // namespace cindertop::agent
