#include "ui/windows/ProgramDesktop.h"

#include <QDesktopServices>
#include <QUrl>
#include <utility>

namespace cindertop::ui {

ProgramDesktop::ProgramDesktop(ProgramWindows& windows, SaveChooser chooser, Speaker speaker)
    : windows_(windows), chooser_(std::move(chooser)), speaker_(std::move(speaker)) {}

void ProgramDesktop::setActivationPolicy(ActivationPolicy policy) {
    windows_.setTaskBarEntry(policy == ActivationPolicy::regular);
}

void ProgramDesktop::activate() {
    windows_.activate();
}

void ProgramDesktop::chooseSaveLocation(const SavePanel& panel, SaveCompletion completion) {
    chooser_(panel, std::move(completion));
}

void ProgramDesktop::tell(const std::string& title, const std::string& sentence) {
    speaker_(title, sentence);
}

void ProgramDesktop::openPage(const std::string& address) {
    if (!address.empty()) { // what is not installed has none
        QDesktopServices::openUrl(QUrl(QString::fromStdString(address)));
    }
}

} // namespace cindertop::ui
