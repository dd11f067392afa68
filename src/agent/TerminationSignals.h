#pragma once

#include "terminal/SignalDescriptor.h"

#include <QSocketNotifier>
#include <functional>

namespace cindertop::agent {

/// A request to end this program (SIGTERM, SIGINT, SIGHUP). Made before any thread starts, those of the
/// windows and of the message bus included: one thread that does not block the signals would let them end
/// everything at once. Programs that this one starts do not inherit the block.
class TerminationSignals {
public:
    TerminationSignals();

    /// Readable once a request has arrived.
    int descriptor() const { return signals_.descriptor(); }

    bool take() const { return signals_.next().has_value(); }

private:
    cli::SignalDescriptor signals_;
};

/// Turns the request into a call on the main thread, whose event loop it needs.
class TerminationNotifier {
public:
    /// `signals` must outlive this.
    TerminationNotifier(const TerminationSignals& signals, std::function<void()> onTermination);

private:
    QSocketNotifier notifier_;
};

} // namespace cindertop::agent
