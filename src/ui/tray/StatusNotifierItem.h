#pragma once

#include "ui/tray/BusObject.h"
#include "ui/tray/StatusItem.h"
#include "ui/tray/StatusNotifierTypes.h"
#include "ui/tray/TrayWatcher.h"

#include <QDBusConnection>
#include <QList>
#include <QPoint>
#include <QString>
#include <QVariantMap>
#include <optional>

namespace cindertop::ui {

/// The status item as the desktops' panels know it: org.kde.StatusNotifierItem on the session bus. Its menu
/// is the one at StatusMenu::path on the same connection.
///
/// Panels lay the item out by themselves, and know neither a colour nor an opacity of its text: they are told
/// the text whenever it changes, and fades stay here.
class StatusNotifierItem final : public BusObject, public StatusItem {
public:
    static constexpr const char* path = "/StatusNotifierItem";
    static constexpr const char* interface = "org.kde.StatusNotifierItem";

    explicit StatusNotifierItem(const QDBusConnection& connection);
    ~StatusNotifierItem() override;

    const QString& serviceName() const { return serviceName_; }

    /// Whether the item can be seen.
    TrayWatcher& watcher() { return watcher_; }

    void setImage(const StatusImage& image) override;
    void setToolTip(const QString& toolTip) override;
    void setTitle(const std::optional<StatusTitle>& title) override;

    void setLength(std::optional<int> /*length*/) override {}

    void setImagePosition(ImagePosition /*position*/) override {}

    void setAction(Action action) override { action_ = std::move(action); }

    QString introspect(const QString& path) const override;

protected:
    QVariantMap properties() const override;
    Answer call(const QDBusMessage& message) override;

private:
    static void takeToken(const QByteArray& token);
    void clickedAt(const QPoint& point);

    QString serviceName_;
    StatusImage image_;
    QList<IconPixmap> pixmaps_; ///< of the image
    QString toolTip_;
    QString label_;
    Action action_;
    TrayWatcher watcher_; ///< last: the item is announced when it is there
};

} // namespace cindertop::ui
