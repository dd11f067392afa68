#include "ui/tray/StatusNotifierItem.h"

#include "ui/tray/StatusMenu.h"

#include <QCoreApplication>
#include <QDBusObjectPath>
#include <QTimer>
#include <algorithm>
#include <utility>

namespace cindertop::ui {

namespace {

constexpr auto itemIntrospection = R"xml(
  <interface name="org.kde.StatusNotifierItem">
    <property name="Category" type="s" access="read"/>
    <property name="Id" type="s" access="read"/>
    <property name="Title" type="s" access="read"/>
    <property name="Status" type="s" access="read"/>
    <property name="WindowId" type="i" access="read"/>
    <property name="IconName" type="s" access="read"/>
    <property name="IconPixmap" type="a(iiay)" access="read"/>
    <property name="IconAccessibleDesc" type="s" access="read"/>
    <property name="OverlayIconName" type="s" access="read"/>
    <property name="OverlayIconPixmap" type="a(iiay)" access="read"/>
    <property name="AttentionIconName" type="s" access="read"/>
    <property name="AttentionIconPixmap" type="a(iiay)" access="read"/>
    <property name="AttentionMovieName" type="s" access="read"/>
    <property name="IconThemePath" type="s" access="read"/>
    <property name="ToolTip" type="(sa(iiay)ss)" access="read"/>
    <property name="ItemIsMenu" type="b" access="read"/>
    <property name="Menu" type="o" access="read"/>
    <property name="XAyatanaLabel" type="s" access="read"/>
    <property name="XAyatanaLabelGuide" type="s" access="read"/>
    <method name="Activate">
      <arg name="x" type="i" direction="in"/>
      <arg name="y" type="i" direction="in"/>
    </method>
    <method name="SecondaryActivate">
      <arg name="x" type="i" direction="in"/>
      <arg name="y" type="i" direction="in"/>
    </method>
    <method name="ContextMenu">
      <arg name="x" type="i" direction="in"/>
      <arg name="y" type="i" direction="in"/>
    </method>
    <method name="Scroll">
      <arg name="delta" type="i" direction="in"/>
      <arg name="orientation" type="s" direction="in"/>
    </method>
    <method name="ProvideXdgActivationToken">
      <arg name="token" type="s" direction="in"/>
    </method>
    <signal name="NewTitle"/>
    <signal name="NewIcon"/>
    <signal name="NewAttentionIcon"/>
    <signal name="NewOverlayIcon"/>
    <signal name="NewToolTip"/>
    <signal name="NewStatus">
      <arg name="status" type="s"/>
    </signal>
    <signal name="XAyatanaNewLabel">
      <arg name="label" type="s"/>
      <arg name="guide" type="s"/>
    </signal>
  </interface>
)xml";

constexpr auto tokenVariable = "XDG_ACTIVATION_TOKEN";

/// The name that panels expect; where it is refused, the connection's own does as well.
QString claimName(QDBusConnection connection) {
    const auto name = QString("org.kde.StatusNotifierItem-%1-1").arg(QCoreApplication::applicationPid());
    return connection.isConnected() && connection.registerService(name) ? name : connection.baseService();
}

} // namespace

StatusNotifierItem::StatusNotifierItem(const QDBusConnection& connection)
    : BusObject(connection, path, interface),
      serviceName_(claimName(connection)),
      watcher_(connection, serviceName_) {
    registerStatusNotifierTypes();
    appear();
}

StatusNotifierItem::~StatusNotifierItem() {
    auto bus = connection();
    if (bus.isConnected()) { // Qt would ask a bus that is not there
        bus.unregisterService(serviceName_);
    }
}

void StatusNotifierItem::setImage(const StatusImage& image) {
    if (image == image_) {
        return;
    }
    image_ = image;
    pixmaps_ = IconPixmap::of(image.sizes);
    send("NewIcon");
}

void StatusNotifierItem::setToolTip(const QString& toolTip) {
    if (std::exchange(toolTip_, toolTip) != toolTip) {
        send("NewToolTip");
    }
}

/// The gap between picture and text is the panel's.
void StatusNotifierItem::setTitle(const std::optional<StatusTitle>& title) {
    const auto label = title ? title->text.trimmed() : QString();
    if (std::exchange(label_, label) != label) {
        send("XAyatanaNewLabel", {label_, label_});
    }
}

QString StatusNotifierItem::introspect(const QString& /*path*/) const {
    return itemIntrospection;
}

/// The guide is the widest text that the panel should keep room for: the item is as long as it needs to be.
/// Panels sort items by category, and this one belongs beside battery and brightness.
QVariantMap StatusNotifierItem::properties() const {
    const auto noPixmaps = QVariant::fromValue(QList<IconPixmap>());
    return {
        {"Category", "Hardware"},
        {"Id", "cindertop"},
        {"Title", "Cindertop"},
        {"Status", "Active"},
        {"WindowId", 0},
        {"IconName", image_.themeName},
        {"IconPixmap", QVariant::fromValue(pixmaps_)},
        {"IconAccessibleDesc", "Cindertop"},
        {"OverlayIconName", ""},
        {"OverlayIconPixmap", noPixmaps},
        {"AttentionIconName", ""},
        {"AttentionIconPixmap", noPixmaps},
        {"AttentionMovieName", ""},
        {"IconThemePath", ""},
        {"ToolTip", QVariant::fromValue(ToolTip{.iconName = {}, .icon = {}, .title = toolTip_, .text = {}})},
        {"ItemIsMenu", false},
        {"Menu", QVariant::fromValue(QDBusObjectPath(StatusMenu::path))},
        {"XAyatanaLabel", label_},
        {"XAyatanaLabelGuide", label_},
    };
}

BusObject::Answer StatusNotifierItem::call(const QDBusMessage& message) {
    const auto name = message.member() + "(" + message.signature() + ")";
    const auto arguments = message.arguments();
    if (name == "Activate(ii)" || name == "SecondaryActivate(ii)" || name == "ContextMenu(ii)") {
        clickedAt({arguments[0].toInt(), arguments[1].toInt()});
    } else if (name == "ProvideXdgActivationToken(s)") {
        takeToken(arguments[0].toString().toUtf8());
    } else if (name != "Scroll(is)") { // there is nothing to scroll
        return unknownMethod(message);
    }
    return QVariantList{};
}

/// Where Qt looks on Wayland when a window wants to come to the front, and takes it from. Anybody on the bus
/// may have sent it.
void StatusNotifierItem::takeToken(const QByteArray& token) {
    constexpr qsizetype longest = 1024;
    const bool isWord = std::ranges::all_of(token, [](char c) { return c > ' ' && c <= '~'; });
    if (isWord && token.size() <= longest) {
        qputenv(tokenVariable, token);
    }
}

/// A panel that shows the menu by itself asks for none, so that every click that arrives here is for the
/// popover. It opens after the panel has its answer.
void StatusNotifierItem::clickedAt(const QPoint& point) {
    QTimer::singleShot(0, this, [this, point] {
        if (action_) {
            action_(point);
        }
        qunsetenv(tokenVariable); // it was for this click
    });
}

} // namespace cindertop::ui
