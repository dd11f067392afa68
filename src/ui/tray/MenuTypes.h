#pragma once

#include <QDBusArgument>
#include <QDBusVariant>
#include <QList>
#include <QMetaType>
#include <QString>
#include <QVariant>
#include <QVariantMap>

namespace cindertop::ui {

/// One item of a menu, as com.canonical.dbusmenu carries it.
struct MenuItemProperties {
    int id = 0;
    QVariantMap properties;
};

/// The same with what is below it.
struct MenuLayout {
    int id = 0;
    QVariantMap properties;
    QList<QDBusVariant> children; ///< each a MenuLayout
};

/// Properties that have their usual values again.
struct MenuItemRemovals {
    int id = 0;
    QStringList names;
};

/// What the user did with an item.
struct MenuEvent {
    int id = 0;
    QString kind; ///< "clicked", "opened"
    QDBusVariant data;
    uint timestamp = 0;
};

QDBusArgument& operator<<(QDBusArgument& argument, const MenuItemProperties& item);
const QDBusArgument& operator>>(const QDBusArgument& argument, MenuItemProperties& item);
QDBusArgument& operator<<(QDBusArgument& argument, const MenuLayout& layout);
const QDBusArgument& operator>>(const QDBusArgument& argument, MenuLayout& layout);
QDBusArgument& operator<<(QDBusArgument& argument, const MenuItemRemovals& item);
const QDBusArgument& operator>>(const QDBusArgument& argument, MenuItemRemovals& item);
QDBusArgument& operator<<(QDBusArgument& argument, const MenuEvent& event);
const QDBusArgument& operator>>(const QDBusArgument& argument, MenuEvent& event);

/// Makes the types known to Qt; any number of times.
void registerMenuTypes();

} // namespace cindertop::ui

Q_DECLARE_METATYPE(cindertop::ui::MenuItemProperties)
Q_DECLARE_METATYPE(cindertop::ui::MenuLayout)
Q_DECLARE_METATYPE(cindertop::ui::MenuItemRemovals)
Q_DECLARE_METATYPE(cindertop::ui::MenuEvent)
