#include "ui/windows/ViewsLibrary.h"

#include "ui/windows/ViewsFactory.h"

#include <QCoreApplication>
#include <QFile>
#include <QJsonObject>
#include <QPluginLoader>
#include <utility>

namespace cindertop::ui {

ViewsLibrary::ViewsLibrary(QString file) : file_(std::move(file)) {}

QString ViewsLibrary::installedFile() {
    const auto folder = QCoreApplication::applicationDirPath();
    const auto built = folder + "/libcindertop-views.so";
    return QFile::exists(built) ? built : folder + "/../lib/cindertop/libcindertop-views.so";
}

std::expected<std::unique_ptr<Views>, ViewsLibrary::Problem>
ViewsLibrary::makeViews(const Appearance& appearance) {
    if (factory_ == nullptr) {
        const auto loaded = load();
        if (!loaded) {
            return std::unexpected(loaded.error());
        }
        factory_ = *loaded;
    }
    return factory_->makeViews(appearance);
}

/// What the library calls itself stands in its file: one of another build, whose constructors would run in
/// this program, is not even loaded.
std::expected<ViewsFactory*, ViewsLibrary::Problem> ViewsLibrary::load() const {
    const auto file = file_.isEmpty() ? installedFile() : file_;
    QPluginLoader loader(file);
    loader.setLoadHints(QLibrary::PreventUnloadHint); // its QML types stay registered
    const auto interface = loader.metaData().value("IID").toString();
    if (QFile::exists(file) && interface != QLatin1String(CINDERTOP_VIEWS_INTERFACE)) {
        return std::unexpected(
            Problem{.sentence = "The windows cannot be shown: they belong to another version of the program.",
                    .otherBuild = interface});
    }
    auto* const factory = qobject_cast<ViewsFactory*>(loader.instance());
    if (factory == nullptr) {
        return std::unexpected(Problem{.sentence = "The windows cannot be shown: " + loader.errorString(),
                                       .otherBuild = std::nullopt});
    }
    return factory;
}

} // namespace cindertop::ui
