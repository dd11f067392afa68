#include "agent/SystemSleep.h"

#include <QSocketNotifier>
#include <utility>

namespace cindertop::agent {

SystemSleep::SystemSleep(Timers& timers, std::string address)
    : timers_(timers), logind_(linux_platform::steadyClock(), std::move(address)) {
    update();
}

SystemSleep::~SystemSleep() = default;

void SystemSleep::update() {
    logind_.update();
    const int descriptor = logind_.descriptor().value_or(-1);
    if (std::exchange(watched_, descriptor) != descriptor) {
        if (notifier_) {
            notifier_.release()->deleteLater(); // it may be the one that called
        }
        if (descriptor >= 0) {
            notifier_ = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read);
            QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(),
                             [this] { update(); });
        }
    }
    retry_ = descriptor < 0 ? timers_.start(pause, [this] { update(); }) : nullptr;
}

} // namespace cindertop::agent
