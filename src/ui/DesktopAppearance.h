#pragma once

#include "ui/Appearance.h"

#include <QDBusConnection>
#include <QDBusVariant>
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
    DesktopAppearance(Appearance& appearance, QDBusConnection bus, std::optional<bool> isDark);

private:
    Q_SLOT void settingChanged(const QString& group, const QString& key, const QDBusVariant& value);
    void read(const QString& group, const QString& key);
    void apply(const QString& key, const QVariant& value);

    Appearance& appearance_;
    QDBusConnection bus_;
    bool isFixed_;
};

} // namespace cindertop::ui
