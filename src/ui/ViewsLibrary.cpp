#include "ui/ViewsLibrary.h"

#include <QCoreApplication>
#include <QFile>
#include <QLibrary>

namespace cindertop::ui {

namespace {

using MakeViews = Views* (*)(Appearance*);

/// Beside the program where it was built, else where it was installed.
QString libraryFile() {
    const auto folder = QCoreApplication::applicationDirPath();
    const auto built = folder + "/libcindertop-views.so";
    return QFile::exists(built) ? built : folder + "/../lib/cindertop/libcindertop-views.so";
}

} // namespace

std::expected<std::unique_ptr<Views>, QString> loadViews(Appearance& appearance) {
    QLibrary library(libraryFile());
    library.setLoadHints(QLibrary::PreventUnloadHint); // its QML types stay registered
    const auto makeViews = reinterpret_cast<MakeViews>(library.resolve("cindertopMakeViews"));
    if (makeViews == nullptr) {
        return std::unexpected("The windows cannot be shown: " + library.errorString());
    }
    return std::unique_ptr<Views>(makeViews(&appearance));
}

} // namespace cindertop::ui
