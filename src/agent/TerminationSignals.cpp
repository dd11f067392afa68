#include "agent/TerminationSignals.h"

#include <utility>

#include <signal.h> // NOLINT(modernize-deprecated-headers): SIGHUP is POSIX

namespace cindertop::agent {

TerminationSignals::TerminationSignals(std::function<void()> onTermination)
    : signals_({SIGTERM, SIGINT, SIGHUP}), notifier_(signals_.descriptor(), QSocketNotifier::Read) {
    QObject::connect(&notifier_, &QSocketNotifier::activated, &notifier_,
                     [this, onTermination = std::move(onTermination)] {
                         while (signals_.next()) {
                         }
                         onTermination();
                     });
}

} // namespace cindertop::agent
