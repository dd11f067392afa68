#include "ui/windows/TaskBarEntry.h"

#include "ui/theme/ProgramIcon.h"
#include "ui/windows/X11.h"

#include <QEvent>
#include <chrono>
#include <utility>

namespace cindertop::ui {

namespace {

/// Tiling window managers show a window that wants to be minimised, at once. Users are slower.
constexpr std::chrono::milliseconds longestRefusal{1000};

} // namespace

TaskBarEntry::TaskBarEntry(std::function<void()> chosen) : chosen_(std::move(chosen)) {
    window_.setTitle("Cindertop");
    window_.setIcon(programIcon());
    window_.resize(1, 1); // nobody is to see it
    window_.installEventFilter(this);
    minimize();
}

void TaskBarEntry::minimize() {
    sinceMinimized_.start();
    window_.showMinimized();
}

bool TaskBarEntry::isPossible() {
    return hasWindowManager();
}

bool TaskBarEntry::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Close) { // it goes with the preference
        event->ignore();
        return true;
    }
    const bool isRaised =
        event->type() == QEvent::WindowStateChange && (window_.windowStates() & Qt::WindowMinimized) == 0;
    if (isRaised && !sinceMinimized_.hasExpired(longestRefusal.count())) {
        window_.hide();
    } else if (isRaised) {
        minimize();
        chosen_();
    }
    return QObject::eventFilter(watched, event);
}

} // namespace cindertop::ui
