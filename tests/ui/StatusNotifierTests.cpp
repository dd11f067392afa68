#include "GuiApplication.h"
#include "ScriptedWatcher.h"
#include "TrayPanel.h"
#include "app/FakeProgram.h"
#include "platform/linux/PrivateBus.h"
#include "platform/qt/EventLoop.h"
#include "ui/tray/StatusMenu.h"
#include "ui/tray/StatusNotifierItem.h"

#include <gtest/gtest.h>

#include <QTimer>

namespace cindertop::ui {
namespace {

using desktop::Connection;
using desktop::runUntil;
using linux_platform::PrivateBus;

class StatusNotifierTest : public testing::Test {
protected:
    StatusNotifierTest() {
        application();
        daemon.start();
        program.start();
        agent = std::make_unique<Connection>(daemon, "agent");
        menu = std::make_unique<StatusMenu>(agent->connection, *program.state, actions());
        item = std::make_unique<StatusNotifierItem>(agent->connection);
        panel = std::make_unique<TrayPanel>(daemon);
        panel->setServer(item->serviceName());
    }

    QString address() const { return QString::fromStdString(daemon.address()); }

    StatusMenu::Actions actions() {
        const auto note = [this](const char* what) { return [this, what] { done.append(what); }; };
        return {.open = note("open"),
                .toggleMonitoring = note("toggle"),
                .checkForUpdates = note("updates"),
                .openHelp = note("help"),
                .openPreferences = note("preferences"),
                .quit = note("quit")};
    }

    QVariantList askItem(const QString& member, const QVariantList& arguments) {
        return panel->ask(StatusNotifierItem::path, StatusNotifierItem::interface, member, arguments);
    }

    QVariantList askMenu(const QString& member, const QVariantList& arguments) {
        return panel->ask(StatusMenu::path, StatusMenu::interface, member, arguments);
    }

    void awaitHost(bool isExpected) {
        runUntil([&] { return item->watcher().isSettled() && item->watcher().hasHost() == isExpected; });
    }

    PrivateBus daemon;
    FakeProgram program;
    QStringList done; ///< the actions
    std::unique_ptr<Connection> agent;
    std::unique_ptr<StatusMenu> menu;
    std::unique_ptr<StatusNotifierItem> item;
    std::unique_ptr<TrayPanel> panel;
};

TEST_F(StatusNotifierTest, RegistersWithEveryWatcherThatAppears) {
    awaitHost(false);
    const QStringList once{item->serviceName()};
    int changes = 0;
    item->watcher().observeHost([&] { ++changes; });
    for (int life = 0; life < 2; ++life) {
        ScriptedWatcher watcher(address(), life == 0);
        runUntil([&] { return !watcher.registered.isEmpty(); });
        awaitHost(life == 0);
        watcher.setHost(life != 0);
        awaitHost(life != 0);
        EXPECT_EQ(watcher.registered, once);
    }
    awaitHost(false);
    EXPECT_EQ(changes, 4);

    ScriptedWatcher watcher(address(), true); // one that is there before the program
    item.reset();
    item = std::make_unique<StatusNotifierItem>(agent->connection);
    awaitHost(true);
    EXPECT_EQ(watcher.registered.last(), item->serviceName());
}

TEST_F(StatusNotifierTest, TellsOnlyWhatHasChanged) {
    QImage picture(2, 1, QImage::Format_ARGB32);
    picture.setPixel(0, 0, 0x80112233);
    picture.setPixel(1, 0, 0xFF445566);
    const StatusImage image{.themeName = "flame", .sizes = {picture}};
    const auto tell = [&](const QString& label, double opacity) {
        item->setImage(image);
        item->setToolTip("Cindertop - Fair");
        item->setTitle(StatusTitle{.text = label, .color = {}, .opacity = opacity});
        return panel->takeHeard();
    };
    panel->takeHeard();
    EXPECT_EQ(tell(" Fair", 0), "NewIcon NewToolTip XAyatanaNewLabel");
    EXPECT_EQ(tell(" Fair", 1), "");
    EXPECT_EQ(tell(" Serious", 1), "XAyatanaNewLabel");
    EXPECT_EQ(panel->get(StatusNotifierItem::path, StatusNotifierItem::interface, "XAyatanaLabel"),
              "Serious");
    item->setTitle(std::nullopt);
    EXPECT_EQ(panel->takeHeard(), "XAyatanaNewLabel");

    const auto get = [&](const char* name) {
        return panel->get(StatusNotifierItem::path, StatusNotifierItem::interface, name);
    };
    const auto pixmaps = qdbus_cast<QList<IconPixmap>>(get("IconPixmap"));
    ASSERT_EQ(pixmaps.size(), 1);
    EXPECT_EQ(pixmaps[0].width, 2);
    EXPECT_EQ(pixmaps[0].pixels, QByteArray::fromHex("80112233FF445566"));
    EXPECT_EQ(qdbus_cast<ToolTip>(get("ToolTip")).title, "Cindertop - Fair");
    EXPECT_EQ(get("IconName"), "flame");
    EXPECT_EQ(get("Status"), "Active");
    EXPECT_EQ(get("Menu").value<QDBusObjectPath>().path(), "/MenuBar");
}

TEST_F(StatusNotifierTest, PassesClicksOn) {
    std::vector<QPoint> clicks;
    askItem("Activate", {1, 2}); // nobody listens yet
    QCoreApplication::processEvents();
    item->setAction([&](const QPoint& point) { clicks.push_back(point); });
    for (const auto* const click : {"Activate", "SecondaryActivate", "ContextMenu"}) {
        EXPECT_TRUE(askItem(click, {3, 4}).isEmpty());
    }
    EXPECT_TRUE(askItem("Scroll", {120, "vertical"}).isEmpty());
    runUntil([&] { return clicks.size() >= 3; });
    EXPECT_EQ(clicks, std::vector(3, QPoint(3, 4)));
}

TEST_F(StatusNotifierTest, LetsTheWindowOfAClickComeToTheFront) {
    const auto clickWith = [&](const QString& token) {
        std::optional<QByteArray> given;
        item->setAction([&](const QPoint&) { given = qgetenv("XDG_ACTIVATION_TOKEN"); });
        EXPECT_TRUE(askItem("ProvideXdgActivationToken", {token}).isEmpty());
        askItem("Activate", {1, 2});
        runUntil([&] { return given.has_value(); });
        EXPECT_FALSE(qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN")); // nobody else's
        return given.value_or("no click");
    };
    EXPECT_EQ(clickWith("token-1_2/3"), "token-1_2/3");
    for (const auto& wrong :
         {QString("two words"), QString("\n"), QString(QChar(0xFC)), QString(2000, 'x')}) {
        EXPECT_EQ(clickWith(wrong), "");
    }
}

QString lineOf(const MenuLayout& layout) {
    const auto& properties = layout.properties;
    return properties.contains("type") ? "-" : properties["label"].toString();
}

TEST_F(StatusNotifierTest, OffersTheMenu) {
    const auto layoutAt = [&](int parent, int depth, const QStringList& names) {
        return qdbus_cast<MenuLayout>(askMenu("GetLayout", {parent, depth, names}).value(1));
    };
    QStringList lines;
    for (const auto& child : layoutAt(0, -1, {}).children) {
        lines.append(lineOf(qdbus_cast<MenuLayout>(child.variant())));
    }
    EXPECT_EQ(lines, (QStringList{"Open Cindertop", "-", "Disable Monitoring", "-", "Check for Updates...",
                                  "Help / Feedback...", "-", "Preferences...", "Quit"}));
    EXPECT_TRUE(layoutAt(0, 0, {}).children.isEmpty());
    EXPECT_EQ(layoutAt(9, -1, {"label", "icon"}).properties, (QVariantMap{{"label", "Quit"}}));

    panel->takeHeard();
    program.state->setPaused(true);
    program.state->setPaused(true);
    EXPECT_EQ(panel->takeHeard(), "ItemsPropertiesUpdated");
    const auto group =
        askMenu("GetGroupProperties", {QVariant::fromValue(QList<int>{3, 77}), QStringList{"label"}});
    const auto found = qdbus_cast<QList<MenuItemProperties>>(group.value(0));
    ASSERT_EQ(found.size(), 1);
    EXPECT_EQ(found[0].properties, (QVariantMap{{"label", "Enable Monitoring"}}));
}

QVariantList eventOn(int id, const char* kind) {
    return {id, kind, QVariant::fromValue(QDBusVariant(0)), 0U};
}

QVariantList eventsOn(const QList<int>& ids) {
    QList<MenuEvent> events;
    for (const int id : ids) {
        events.append({.id = id, .kind = "clicked", .data = QDBusVariant(0), .timestamp = 0});
    }
    return {QVariant::fromValue(events)};
}

TEST_F(StatusNotifierTest, CarriesOutWhatIsChosen) {
    for (int id = 0; id <= 9; ++id) {
        askMenu("Event", eventOn(id, "clicked"));
        askMenu("Event", eventOn(id, "hovered"));
    }
    const auto unknown = askMenu("EventGroup", eventsOn({1, 77})).value(0);
    EXPECT_EQ(qdbus_cast<QList<int>>(unknown), QList<int>{77});
    const QStringList all{"open", "toggle", "updates", "help", "preferences", "quit", "open"};
    runUntil([&] { return done.size() >= all.size(); });
    EXPECT_EQ(done, all);
}

TEST_F(StatusNotifierTest, RefusesWhatItDoesNotKnow) {
    const QVariant ids = QVariant::fromValue(QList<int>{77});

    struct Case {
        const char* method;
        QVariantList arguments;
        const char* error;
    };

    constexpr auto invalid = "org.freedesktop.DBus.Error.InvalidArgs";
    constexpr auto unknownMethod = "org.freedesktop.DBus.Error.UnknownMethod";
    for (const auto& [method, arguments, error] : std::to_array<Case>({
             {"GetLayout", {77, -1, QStringList()}, invalid},
             {"GetLayout", {-1, -1, QStringList()}, invalid},
             {"GetLayout", {"root"}, unknownMethod},
             {"GetProperty", {3, "colour"}, invalid},
             {"GetProperty", {77, "label"}, invalid},
             {"Event", eventOn(-2147483647 - 1, "clicked"), invalid},
             {"Event", {1, "clicked"}, unknownMethod},
             {"EventGroup", eventsOn({77, -5}), invalid},
             {"AboutToShow", {10}, invalid},
             {"AboutToShowGroup", {ids}, invalid},
             {"Explode", {}, unknownMethod},
         })) {
        EXPECT_EQ(askMenu(method, arguments), QVariantList{error}) << method;
    }
    EXPECT_EQ(askMenu("AboutToShow", {0}), QVariantList{false});
    EXPECT_EQ(askItem("Activate", {"here"}), QVariantList{unknownMethod});
    EXPECT_EQ(panel->get(StatusMenu::path, StatusMenu::interface, "Weight"),
              "org.freedesktop.DBus.Error.UnknownProperty");
    EXPECT_EQ(panel->get(StatusMenu::path, StatusNotifierItem::interface, "Title"),
              "org.freedesktop.DBus.Error.UnknownInterface");
    QCoreApplication::processEvents();
    EXPECT_TRUE(done.isEmpty());
}

TEST_F(StatusNotifierTest, LivesWithoutABus) {
    const QDBusConnection none("there is none");
    const StatusMenu silentMenu(none, *program.state, actions());
    StatusNotifierItem silentItem(none);
    silentItem.setToolTip("Cindertop - Fair");
    program.state->setPaused(true);
    EXPECT_TRUE(silentItem.watcher().isSettled());
    EXPECT_FALSE(silentItem.watcher().hasHost());

    daemon.stop(); // and the other ones lose theirs
    QTimer look;   // since nothing tells the event loop
    look.start(1);
    runUntil([&] { return !agent->connection.isConnected(); });
    item->setToolTip("Cindertop - Fair");
}

} // namespace
} // namespace cindertop::ui
