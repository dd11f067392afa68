#include "ui/tray/StatusMenu.h"

#include "support/Wording.h"
#include "ui/presentation/MenuTexts.h"
#include "ui/presentation/QtText.h"

#include <QTimer>
#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <utility>

namespace cindertop::ui {

namespace {

constexpr auto menuIntrospection = R"xml(
  <interface name="com.canonical.dbusmenu">
    <property name="Version" type="u" access="read"/>
    <property name="TextDirection" type="s" access="read"/>
    <property name="Status" type="s" access="read"/>
    <property name="IconThemePath" type="as" access="read"/>
    <method name="GetLayout">
      <arg name="parentId" type="i" direction="in"/>
      <arg name="recursionDepth" type="i" direction="in"/>
      <arg name="propertyNames" type="as" direction="in"/>
      <arg name="revision" type="u" direction="out"/>
      <arg name="layout" type="(ia{sv}av)" direction="out"/>
    </method>
    <method name="GetGroupProperties">
      <arg name="ids" type="ai" direction="in"/>
      <arg name="propertyNames" type="as" direction="in"/>
      <arg name="properties" type="a(ia{sv})" direction="out"/>
    </method>
    <method name="GetProperty">
      <arg name="id" type="i" direction="in"/>
      <arg name="name" type="s" direction="in"/>
      <arg name="value" type="v" direction="out"/>
    </method>
    <method name="Event">
      <arg name="id" type="i" direction="in"/>
      <arg name="eventId" type="s" direction="in"/>
      <arg name="data" type="v" direction="in"/>
      <arg name="timestamp" type="u" direction="in"/>
    </method>
    <method name="EventGroup">
      <arg name="events" type="a(isvu)" direction="in"/>
      <arg name="idErrors" type="ai" direction="out"/>
    </method>
    <method name="AboutToShow">
      <arg name="id" type="i" direction="in"/>
      <arg name="needUpdate" type="b" direction="out"/>
    </method>
    <method name="AboutToShowGroup">
      <arg name="ids" type="ai" direction="in"/>
      <arg name="updatesNeeded" type="ai" direction="out"/>
      <arg name="idErrors" type="ai" direction="out"/>
    </method>
    <signal name="ItemsPropertiesUpdated">
      <arg name="updatedProps" type="a(ia{sv})"/>
      <arg name="removedProps" type="a(ias)"/>
    </signal>
    <signal name="LayoutUpdated">
      <arg name="revision" type="u"/>
      <arg name="parent" type="i"/>
    </signal>
    <signal name="ItemActivationRequested">
      <arg name="id" type="i"/>
      <arg name="timestamp" type="u"/>
    </signal>
  </interface>
)xml";

constexpr uint protocolVersion = 3;
constexpr uint revision = 1; ///< items change their words, never their places
constexpr int root = 0;

struct Item {
    Wording label; ///< empty: a line
    std::function<void()> StatusMenu::Actions::* action;
};

using Actions = StatusMenu::Actions;

constexpr Item line{.label = Wording::same(""), .action = nullptr};

/// An item's id is its place, from 1.
constexpr std::array items{
    Item{.label = Wording::same("Open Cindertop"), .action = &Actions::open},
    line,
    Item{.label = Wording::same("Disable Monitoring"), .action = &Actions::toggleMonitoring},
    line,
    Item{.label = Wording::same("Check for Updates..."), .action = &Actions::checkForUpdates},
    Item{.label = Wording::same("Help / Feedback..."), .action = &Actions::openHelp},
    line,
    Item{.label = settingsMenuTitle, .action = &Actions::openPreferences},
    Item{.label = Wording::same("Quit"), .action = &Actions::quit},
};
constexpr int itemCount = items.size();

constexpr int monitoringItem = 3;
constexpr int updatesItem = 5;
static_assert(items[updatesItem - 1].action == &Actions::checkForUpdates);
static_assert(items[monitoringItem - 1].action == &Actions::toggleMonitoring);

/// `id` is one from 1.
const Item& itemOf(int id) {
    return items.at(static_cast<std::size_t>(id) - 1);
}

bool isKnown(int id) {
    return id >= root && id <= itemCount;
}

/// The root and the items in their order.
QList<int> allIds() {
    QList<int> ids;
    for (int id = root; id <= itemCount; ++id) {
        ids.append(id);
    }
    return ids;
}

QList<int> unknownAmong(const QList<int>& ids) {
    QList<int> unknown;
    std::ranges::remove_copy_if(ids, std::back_inserter(unknown), isKnown);
    return unknown;
}

QString noSuchItem(int id) {
    return QString("There is no item %1").arg(id);
}

} // namespace

StatusMenu::StatusMenu(const QDBusConnection& connection, const AppState& appState, Actions actions)
    : BusObject(connection, path, interface),
      appState_(appState),
      actions_(std::move(actions)),
      announced_(propertiesOf(monitoringItem, {})) {
    registerMenuTypes();
    const auto& published = appState_.published();
    observations_ = {published.isPaused.bindable().addNotifier([this] { announceChange(); }),
                     published.legalTermsAccepted.bindable().addNotifier([this] { announceChange(); })};
    appear();
}

QString StatusMenu::introspect(const QString& /*path*/) const {
    return menuIntrospection;
}

QVariantMap StatusMenu::properties() const {
    return {{"Version", protocolVersion},
            {"TextDirection", "ltr"},
            {"Status", "normal"},
            {"IconThemePath", QStringList()}};
}

/// No names mean all. What has its usual value (visible, enabled) is left out.
QVariantMap StatusMenu::propertiesOf(int id, const QStringList& names) const {
    QVariantMap properties;
    if (id == root) {
        properties.insert("children-display", "submenu");
    } else if (const auto label = itemOf(id).label.in(appState_.environment().machine.operatingSystem);
               label.empty()) {
        properties.insert("type", "separator");
    } else {
        properties.insert("label", qtText(label));
    }
    if (id == monitoringItem) {
        addMonitoring(properties);
    }
    if (id == updatesItem && !appState_.offersUpdateCheck()) {
        properties.insert("visible", false);
    }
    if (!names.isEmpty()) {
        properties.removeIf([&](const auto& property) { return !names.contains(property.key()); });
    }
    return properties;
}

/// Before the terms are accepted the item says so, and leads to them.
void StatusMenu::addMonitoring(QVariantMap& properties) const {
    const auto& published = appState_.published();
    const auto system = appState_.environment().machine.operatingSystem;
    const bool setsUp = system == OperatingSystem::gnuLinux && !*published.legalTermsAccepted;
    properties.insert("label", setsUp ? QString("Not monitoring: Set Up Cindertop...")
                                      : monitoringToggleTitle(system, *published.isPaused));
    properties.insert("enabled", setsUp || *published.legalTermsAccepted);
}

/// `depth` counts the levels below the item; a negative one is all of them.
MenuLayout StatusMenu::layoutOf(int id, int depth, const QStringList& names) const {
    MenuLayout layout{.id = id, .properties = propertiesOf(id, names), .children = {}};
    if (id == root && depth != 0) {
        for (int child = 1; child <= itemCount; ++child) {
            layout.children.append(QDBusVariant(QVariant::fromValue(layoutOf(child, depth - 1, names))));
        }
    }
    return layout;
}

BusObject::Answer StatusMenu::call(const QDBusMessage& message) {
    struct Row {
        const char* name;
        Method method;
    };

    static constexpr std::array methods{
        Row{.name = "GetLayout(iias)", .method = &StatusMenu::getLayout},
        Row{.name = "GetGroupProperties(aias)", .method = &StatusMenu::getGroupProperties},
        Row{.name = "GetProperty(is)", .method = &StatusMenu::getProperty},
        Row{.name = "Event(isvu)", .method = &StatusMenu::handleEvent},
        Row{.name = "EventGroup(a(isvu))", .method = &StatusMenu::handleEventGroup},
        Row{.name = "AboutToShow(i)", .method = &StatusMenu::aboutToShow},
        Row{.name = "AboutToShowGroup(ai)", .method = &StatusMenu::aboutToShowGroup},
    };
    const auto name = message.member() + "(" + message.signature() + ")";
    const auto* const row = std::ranges::find_if(methods, [&](const Row& each) { return name == each.name; });
    return row == methods.end() ? unknownMethod(message) : (this->*row->method)(message.arguments());
}

BusObject::Answer StatusMenu::getLayout(const QVariantList& arguments) {
    const int parent = arguments[0].toInt();
    if (!isKnown(parent)) {
        return invalidArguments(noSuchItem(parent));
    }
    const auto layout = layoutOf(parent, arguments[1].toInt(), arguments[2].toStringList());
    return QVariantList{revision, QVariant::fromValue(layout)};
}

/// Items that are not there are left out.
BusObject::Answer StatusMenu::getGroupProperties(const QVariantList& arguments) {
    const auto wanted = qdbus_cast<QList<int>>(arguments[0]);
    const auto names = arguments[1].toStringList();
    QList<MenuItemProperties> answer;
    for (const int id : wanted.isEmpty() ? allIds() : wanted) {
        if (isKnown(id)) {
            answer.append({.id = id, .properties = propertiesOf(id, names)});
        }
    }
    return QVariantList{QVariant::fromValue(answer)};
}

BusObject::Answer StatusMenu::getProperty(const QVariantList& arguments) {
    const int id = arguments[0].toInt();
    if (!isKnown(id)) {
        return invalidArguments(noSuchItem(id));
    }
    const auto name = arguments[1].toString();
    const auto value = propertiesOf(id, {}).value(name);
    if (!value.isValid()) {
        return invalidArguments(QString("Item %1 has no property %2").arg(id).arg(name));
    }
    return QVariantList{QVariant::fromValue(QDBusVariant(value))};
}

BusObject::Answer StatusMenu::handleEvent(const QVariantList& arguments) {
    const int id = arguments[0].toInt();
    if (!isKnown(id)) {
        return invalidArguments(noSuchItem(id));
    }
    trigger(id, arguments[1].toString());
    return QVariantList{};
}

/// Known items are triggered; it is an error when none is known.
BusObject::Answer StatusMenu::handleEventGroup(const QVariantList& arguments) {
    const auto events = qdbus_cast<QList<MenuEvent>>(arguments[0]);
    QList<int> ids;
    std::ranges::transform(events, std::back_inserter(ids), &MenuEvent::id);
    const auto unknown = unknownAmong(ids);
    if (!events.isEmpty() && unknown.size() == events.size()) {
        return invalidArguments("There is none of these items");
    }
    for (const auto& event : events) {
        trigger(event.id, event.kind);
    }
    return QVariantList{QVariant::fromValue(unknown)};
}

/// The menu is always up to date.
BusObject::Answer StatusMenu::aboutToShow(const QVariantList& arguments) {
    const int id = arguments[0].toInt();
    return isKnown(id) ? Answer(QVariantList{false}) : invalidArguments(noSuchItem(id));
}

BusObject::Answer StatusMenu::aboutToShowGroup(const QVariantList& arguments) {
    const auto ids = qdbus_cast<QList<int>>(arguments[0]);
    const auto unknown = unknownAmong(ids);
    if (!ids.isEmpty() && unknown.size() == ids.size()) {
        return invalidArguments("There is none of these items");
    }
    return QVariantList{QVariant::fromValue(QList<int>()), QVariant::fromValue(unknown)};
}

void StatusMenu::trigger(int id, const QString& kind) {
    if (kind != "clicked" || id == root || !isKnown(id)) {
        return;
    }
    const auto action = itemOf(id).action;
    const auto properties = propertiesOf(id, {});
    const bool isOffered =
        properties.value("enabled", true).toBool() && properties.value("visible", true).toBool();
    if (action == nullptr || !isOffered) {
        return;
    }
    QTimer::singleShot(0, this, actions_.*action);
}

void StatusMenu::announceChange() {
    const auto current = propertiesOf(monitoringItem, {});
    if (std::exchange(announced_, current) == current) {
        return;
    }
    const QList<MenuItemProperties> changed{{.id = monitoringItem, .properties = current}};
    send("ItemsPropertiesUpdated",
         {QVariant::fromValue(changed), QVariant::fromValue(QList<MenuItemRemovals>())});
}

} // namespace cindertop::ui
