#include "GuiApplication.h"
#include "platform/linux/PrivateBus.h"
#include "platform/qt/BusPeer.h"
#include "ui/theme/DesktopAppearance.h"

#include <gtest/gtest.h>

#include <QDBusVirtualObject>
#include <QMap>

namespace cindertop::ui {
namespace {

constexpr auto service = "org.freedesktop.portal.Desktop";
constexpr auto path = "/org/freedesktop/portal/desktop";
constexpr auto interface = "org.freedesktop.portal.Settings";
constexpr auto appearanceGroup = "org.freedesktop.appearance";
constexpr auto interfaceGroup = "org.gnome.desktop.interface";

/// The desktop's settings on the bus, as the portal has them.
class ScriptedPortal final : public QDBusVirtualObject {
public:
    QMap<QString, QVariant> values;

    explicit ScriptedPortal(const linux_platform::PrivateBus& bus) : bus_(bus, "portal") {
        bus_.connection.registerVirtualObject(path, this);
        bus_.connection.registerService(service);
    }

    void change(const char* group, const QString& key, const QVariant& value) {
        values[key] = value;
        auto signal = QDBusMessage::createSignal(path, interface, "SettingChanged");
        signal << group << key << QVariant::fromValue(QDBusVariant(value));
        bus_.connection.send(signal);
    }

    QString introspect(const QString& /*path*/) const override { return {}; }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        const auto key = message.arguments().value(1).toString();
        if (!values.contains(key)) {
            return connection.send(message.createErrorReply(interface, "unknown"));
        }
        const QDBusVariant inner(values[key]);
        return connection.send(
            message.createReply(QVariant::fromValue(QDBusVariant(QVariant::fromValue(inner)))));
    }

private:
    desktop::Connection bus_;
};

class DesktopAppearanceTest : public testing::Test {
protected:
    linux_platform::PrivateBus bus;
    Appearance appearance;

    DesktopAppearanceTest() {
        application();
        bus.start();
    }
};

TEST_F(DesktopAppearanceTest, FollowsThePortalWhileItRuns) {
    const desktop::Connection own(bus, "own");
    const DesktopAppearance desktop(appearance, own.connection, std::nullopt);
    ScriptedPortal portal(bus); // it starts late
    portal.values["color-scheme"] = 1U;
    portal.values["text-scaling-factor"] = 1.5;
    desktop::runUntil([&] { return appearance.isDark() && appearance.textScale() == 1.5; });
    portal.change(appearanceGroup, "color-scheme", 2U);
    portal.change(interfaceGroup, "text-scaling-factor", 2.0);
    portal.change(interfaceGroup, "enable-animations", false);
    portal.change("org.example", "text-scaling-factor", 1.0); // another's
    desktop::runUntil([&] { return appearance.reducesMotion(); });
    EXPECT_FALSE(appearance.isDark());
    EXPECT_EQ(appearance.textScale(), 2.0);
    portal.change(appearanceGroup, "color-scheme", 1U);
    desktop::runUntil([&] { return appearance.isDark(); });
}

TEST_F(DesktopAppearanceTest, FollowsThePortalOfABusThatCameBack) {
    const desktop::Connection first(bus, "first");
    DesktopAppearance desktop(appearance, first.connection, false);
    bus.stop();
    bus.start();
    const desktop::Connection second(bus, "second");
    desktop.useBus(second.connection);
    ScriptedPortal portal(bus);
    portal.values["enable-animations"] = false;
    desktop::runUntil([&] { return appearance.reducesMotion(); });
    portal.change(appearanceGroup, "color-scheme", 1U); // the user said light
    portal.change(interfaceGroup, "enable-animations", true);
    desktop::runUntil([&] { return !appearance.reducesMotion(); });
    EXPECT_FALSE(appearance.isDark());
}

} // namespace
} // namespace cindertop::ui
