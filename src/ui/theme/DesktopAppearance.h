#pragma once

#include "ui/theme/Appearance.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>
#include <optional>

namespace cindertop::ui {

/// Keeps an appearance as the desktop has it: first as the application's palette looks, then as the desktop's
/// settings say, read over the portal without waiting for it. Needs a QGuiApplication; main thread.
class DesktopAppearance : public QObject {
    Q_OBJECT

public:
    /// `isDark` overrules the desktop. `appearance` must outlive this.
    DesktopAppearance(Appearance& appearance, const QDBusConnection& bus, std::optional<bool> isDark);

    /// The connection was replaced or lost: what was read last stays until something else is.
    void useBus(const QDBusConnection& bus);

private:
    Q_SLOT void settingChanged(const QDBusMessage& signal);
    void readAll();
    void read(const QString& group, const QString& key);
    void apply(const QString& key, const QVariant& value);

    Appearance& appearance_;
    QDBusConnection bus_;
    QDBusServiceWatcher portal_; ///< it may start late and again
    bool isFixed_;
};

} // namespace cindertop::ui
