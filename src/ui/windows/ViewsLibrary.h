#pragma once

#include "ui/theme/Appearance.h"
#include "ui/windows/Views.h"

#include <QString>
#include <expected>
#include <memory>
#include <optional>

namespace cindertop::ui {

class ViewsFactory;

/// The library with the windows: loaded for the first one, after which it stays, whatever happens to its
/// file. Main thread.
class ViewsLibrary {
public:
    struct Problem {
        QString sentence;
        /// What the library calls itself, where it belongs to another build of the program. It was not
        /// loaded.
        std::optional<QString> otherBuild;
    };

    /// Loads `file`, else the installed one.
    explicit ViewsLibrary(QString file = {});

    /// Makes what it holds. `appearance` must outlive the result.
    std::expected<std::unique_ptr<Views>, Problem> makeViews(const Appearance& appearance);

    /// Beside the program where it was built, else where it was installed.
    /// Needs the application.
    static QString installedFile();

private:
    std::expected<ViewsFactory*, Problem> load() const;

    QString file_;                    ///< empty: the installed one
    ViewsFactory* factory_ = nullptr; ///< of the library
};

} // namespace cindertop::ui
