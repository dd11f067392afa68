#pragma once

#include "app/AppState.h"
#include "ui/tray/BusObject.h"
#include "ui/tray/MenuTypes.h"

#include <QDBusConnection>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include <QVariantMap>
#include <array>
#include <functional>

namespace cindertop::ui {

/// The status item's menu, com.canonical.dbusmenu on the session bus: the way in where a panel does not tell
/// of clicks. Main thread.
class StatusMenu final : public BusObject {
public:
    static constexpr const char* path = "/MenuBar";
    static constexpr const char* interface = "com.canonical.dbusmenu";

    /// What the items do; the event loop runs them after the panel has its answer. All are set.
    struct Actions {
        std::function<void()> open;
        std::function<void()> toggleMonitoring;
        std::function<void()> checkForUpdates;
        std::function<void()> openHelp;
        std::function<void()> openPreferences;
        std::function<void()> quit;
    };

    /// `appState` must outlive this.
    StatusMenu(const QDBusConnection& connection, const AppState& appState, Actions actions);

    QString introspect(const QString& path) const override;

protected:
    QVariantMap properties() const override;
    Answer call(const QDBusMessage& message) override;

private:
    using Method = Answer (StatusMenu::*)(const QVariantList& arguments);

    QVariantMap propertiesOf(int id, const QStringList& names) const;
    void addMonitoring(QVariantMap& properties) const;
    MenuLayout layoutOf(int id, int depth, const QStringList& names) const;

    Answer getLayout(const QVariantList& arguments);
    Answer getGroupProperties(const QVariantList& arguments);
    Answer getProperty(const QVariantList& arguments);
    Answer handleEvent(const QVariantList& arguments);
    Answer handleEventGroup(const QVariantList& arguments);
    Answer aboutToShow(const QVariantList& arguments);
    Answer aboutToShowGroup(const QVariantList& arguments);
    void trigger(int id, const QString& kind);
    void announceChange();

    const AppState& appState_;
    Actions actions_;
    QVariantMap announced_; ///< the monitoring item as it was told last
    std::array<QPropertyNotifier, 2> observations_;
};

} // namespace cindertop::ui
