#include "agent/TerminationSignals.h"

#include <array>
#include <utility>

#include <pthread.h>
#include <signal.h> // NOLINT(modernize-deprecated-headers): SIGHUP is POSIX

namespace cindertop::agent {

namespace {

constexpr std::array wishes{SIGTERM, SIGINT, SIGHUP};

void unblockInChild() {
    sigset_t blocked;
    ::sigemptyset(&blocked);
    for (const int signal : wishes) {
        ::sigaddset(&blocked, signal);
    }
    ::pthread_sigmask(SIG_UNBLOCK, &blocked, nullptr);
}

} // namespace

TerminationSignals::TerminationSignals() : signals_({wishes[0], wishes[1], wishes[2]}) {
    ::pthread_atfork(nullptr, nullptr, unblockInChild);
}

TerminationNotifier::TerminationNotifier(const TerminationSignals& signals,
                                         std::function<void()> onTermination)
    : notifier_(signals.descriptor(), QSocketNotifier::Read) {
    QObject::connect(&notifier_, &QSocketNotifier::activated, &notifier_,
                     [&signals, onTermination = std::move(onTermination)] {
                         while (signals.take()) {
                         }
                         onTermination();
                     });
}

} // namespace cindertop::agent
