#pragma once

#include <QString>
#include <QUuid>
#include <functional>

namespace cindertop::ui {

/// A question that the settings window asks before it does something.
struct SettingsConfirmation {
    enum class Role { normal, destructive }; ///< destructive: something may be lost

    QUuid id = QUuid::createUuid();
    QString title;
    QString message;
    QString confirmTitle;
    QString cancelTitle = "Cancel";
    Role role = Role::normal;
    std::function<void()> action; ///< run once when the user confirms; main thread
};

/// Lays a question over the settings window. A question that is still open is replaced, without its action.
using PresentConfirmation = std::function<void(SettingsConfirmation confirmation)>;

} // namespace cindertop::ui
