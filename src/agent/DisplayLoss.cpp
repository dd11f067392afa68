#include "agent/DisplayLoss.h"

#include "app/AppState.h"

#include <QCoreApplication>
#include <QString>
#include <QThread>
#include <QTimer>
#include <QtGlobal>
#include <cstdlib>

#include <unistd.h>

namespace cindertop::agent {

namespace {

/// A disk that takes longer keeps the program from ending no more.
constexpr std::chrono::seconds longestEnd{5};

AppState* stateToFinish = nullptr;
QtMessageHandler formerHandler = nullptr;

/// What Qt's platform plugins say before they end the program; there is no other notice.
bool tellsOfTheLoss(const QString& message) {
    return message.startsWith("The X11 connection broke") || message.startsWith("The Wayland connection ");
}

void end() {
    stateToFinish->finish();
    stateToFinish->environment().defaults.apply({}); // what could not be stored before
    // main() has not returned: its objects still use what exit() would destroy.
    ::_exit(EXIT_FAILURE);
}

void watchMessages(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (formerHandler != nullptr) {
        formerHandler(type, context, message);
    }
    if (!tellsOfTheLoss(message)) {
        return;
    }
    auto* const application = QCoreApplication::instance();
    if (QThread::currentThread() == application->thread()) {
        end();
    }
    // Wayland's own thread ends the program when this returns.
    QTimer::singleShot(0, application, end);
    std::this_thread::sleep_for(longestEnd);
}

} // namespace

DisplayLoss::DisplayLoss(AppState& state) {
    stateToFinish = &state;
    formerHandler = qInstallMessageHandler(watchMessages);
}

DisplayLoss::~DisplayLoss() {
    qInstallMessageHandler(formerHandler);
    stateToFinish = nullptr;
}

} // namespace cindertop::agent
