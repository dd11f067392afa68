#include "ui/tray/MenuTypes.h"

#include <QDBusMetaType>

namespace cindertop::ui {

namespace {

template <typename... Fields>
QDBusArgument& write(QDBusArgument& argument, const Fields&... fields) {
    argument.beginStructure();
    (argument << ... << fields);
    argument.endStructure();
    return argument;
}

template <typename... Fields>
const QDBusArgument& read(const QDBusArgument& argument, Fields&... fields) {
    argument.beginStructure();
    (argument >> ... >> fields);
    argument.endStructure();
    return argument; // NOLINT(bugprone-return-const-ref-from-parameter): as Qt wants it
}

} // namespace

QDBusArgument& operator<<(QDBusArgument& argument, const MenuItemProperties& item) {
    return write(argument, item.id, item.properties);
}

const QDBusArgument& operator>>(const QDBusArgument& argument, MenuItemProperties& item) {
    return read(argument, item.id, item.properties);
}

QDBusArgument& operator<<(QDBusArgument& argument, const MenuLayout& layout) {
    return write(argument, layout.id, layout.properties, layout.children);
}

const QDBusArgument& operator>>(const QDBusArgument& argument, MenuLayout& layout) {
    return read(argument, layout.id, layout.properties, layout.children);
}

QDBusArgument& operator<<(QDBusArgument& argument, const MenuItemRemovals& item) {
    return write(argument, item.id, item.names);
}

const QDBusArgument& operator>>(const QDBusArgument& argument, MenuItemRemovals& item) {
    return read(argument, item.id, item.names);
}

QDBusArgument& operator<<(QDBusArgument& argument, const MenuEvent& event) {
    return write(argument, event.id, event.kind, event.data, event.timestamp);
}

const QDBusArgument& operator>>(const QDBusArgument& argument, MenuEvent& event) {
    return read(argument, event.id, event.kind, event.data, event.timestamp);
}

void registerMenuTypes() {
    qDBusRegisterMetaType<MenuItemProperties>();
    qDBusRegisterMetaType<QList<MenuItemProperties>>();
    qDBusRegisterMetaType<MenuLayout>();
    qDBusRegisterMetaType<MenuItemRemovals>();
    qDBusRegisterMetaType<QList<MenuItemRemovals>>();
    qDBusRegisterMetaType<MenuEvent>();
    qDBusRegisterMetaType<QList<MenuEvent>>();
    qDBusRegisterMetaType<QList<int>>();
    qDBusRegisterMetaType<QList<QDBusVariant>>();
}

} // namespace cindertop::ui
