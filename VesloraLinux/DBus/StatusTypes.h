// SPDX-License-Identifier: MIT
// The records that status items and their menus send over the bus. Any thread.
#pragma once

#include <QByteArray>
#include <QDBusArgument>
#include <QList>
#include <QString>
#include <QVariantMap>

namespace veslora {

/// A picture: four bytes a pixel, alpha, red, green and blue, row after row.
struct StatusIcon {
    int width = 0;
    int height = 0;
    QByteArray bytes;
};
using StatusIcons = QList<StatusIcon>;

struct StatusToolTip {
    QString iconName;
    StatusIcons icons;
    QString title;
    QString text;
};

/// A row of a menu with everything below it.
struct MenuLayout {
    int id = 0;
    QVariantMap properties;
    QList<MenuLayout> children;
};

struct MenuRowProperties {
    int id = 0;
    QVariantMap properties;
};

struct MenuEvent {
    int id = 0;
    QString eventId;
    QDBusVariant data;
    uint timestamp = 0;
};

QDBusArgument& operator<<(QDBusArgument& argument, const StatusIcon& icon);
const QDBusArgument& operator>>(const QDBusArgument& argument, StatusIcon& icon);
QDBusArgument& operator<<(QDBusArgument& argument, const StatusToolTip& toolTip);
const QDBusArgument& operator>>(const QDBusArgument& argument, StatusToolTip& toolTip);
QDBusArgument& operator<<(QDBusArgument& argument, const MenuLayout& layout);
const QDBusArgument& operator>>(const QDBusArgument& argument, MenuLayout& layout);
QDBusArgument& operator<<(QDBusArgument& argument, const MenuRowProperties& row);
const QDBusArgument& operator>>(const QDBusArgument& argument, MenuRowProperties& row);
QDBusArgument& operator<<(QDBusArgument& argument, const MenuEvent& event);
const QDBusArgument& operator>>(const QDBusArgument& argument, MenuEvent& event);

/// Makes the records known to the bus; further calls do nothing.
void registerStatusTypes();

} // namespace veslora

Q_DECLARE_METATYPE(veslora::StatusIcon)
Q_DECLARE_METATYPE(veslora::StatusToolTip)
Q_DECLARE_METATYPE(veslora::MenuLayout)
Q_DECLARE_METATYPE(veslora::MenuRowProperties)
Q_DECLARE_METATYPE(veslora::MenuEvent)
