#include "ui/windows/TaskBarEntry.h"

#include "ui/theme/ProgramIcon.h"
#include "ui/windows/X11.h"

#include <QEvent>
#include <utility>

namespace cindertop::ui {

TaskBarEntry::TaskBarEntry(std::function<void()> chosen) : chosen_(std::move(chosen)) {
    window_.setTitle("Cindertop");
    window_.setIcon(programIcon());
    window_.resize(1, 1); // nobody is to see it
    window_.installEventFilter(this);
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
    if (isRaised) {
        window_.showMinimized();
        chosen_();
    }
    return QObject::eventFilter(watched, event);
}

} // namespace cindertop::ui
