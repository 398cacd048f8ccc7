// SPDX-License-Identifier: MIT
#include "VesloraLinux/DBus/StatusMenuModel.h"

#include <QGuiApplication>
#include <QKeySequence>

namespace veslora {
namespace {

/// One list of keys for each stroke of the shortcut, such as {"Control", "Q"}.
QList<QStringList> keysOf(const QString& shortcut) {
    QList<QStringList> strokes;
    const QKeySequence sequence = QKeySequence::fromString(shortcut, QKeySequence::PortableText);
    for (int index = 0; index < sequence.count(); ++index) {
        const QKeyCombination stroke = sequence[static_cast<uint>(index)];
        QStringList keys;
        const std::pair<Qt::KeyboardModifier, const char*> modifiers[] = {{Qt::ControlModifier, "Control"},
                                                                          {Qt::AltModifier, "Alt"},
                                                                          {Qt::ShiftModifier, "Shift"},
                                                                          {Qt::MetaModifier, "Super"}};
        for (const auto& [modifier, name] : modifiers) {
            if (stroke.keyboardModifiers().testFlag(modifier)) {
                keys.append(QLatin1String(name));
            }
        }
        keys.append(QKeySequence(stroke.key()).toString(QKeySequence::PortableText));
        strokes.append(keys);
    }
    return strokes;
}

QVariantMap propertiesOfRow(const StatusMenuRow& row) {
    if (row.text.isEmpty()) {
        return {{QStringLiteral("type"), QStringLiteral("separator")}};
    }
    // A single underscore would mark the letter that follows it.
    QVariantMap properties{
        {QStringLiteral("label"), QString(row.text).replace(QLatin1Char('_'), QLatin1String("__"))},
        {QStringLiteral("enabled"), row.isEnabled}};
    if (!row.shortcut.isEmpty()) {
        properties.insert(QStringLiteral("shortcut"), QVariant::fromValue(keysOf(row.shortcut)));
    }
    return properties;
}

} // namespace

void StatusMenuModel::setRows(std::vector<StatusMenuRow> rows) {
    m_firstId = idAfterLast();
    m_rows = std::move(rows);
    ++m_revision;
    emit LayoutUpdated(m_revision, 0);
}

void StatusMenuModel::activateFirstRow() {
    for (int id = m_firstId; hasRow(id); ++id) {
        if (row(id).isEnabled && row(id).activate) {
            activate(id);
            return;
        }
    }
}

QString StatusMenuModel::textDirection() const {
    return QGuiApplication::layoutDirection() == Qt::RightToLeft ? QStringLiteral("rtl")
                                                                 : QStringLiteral("ltr");
}

/// `names` empty stands for all of them.
QVariantMap StatusMenuModel::propertiesOf(int id, const QStringList& names) const {
    QVariantMap properties;
    if (id == 0) {
        properties.insert(QStringLiteral("children-display"), QStringLiteral("submenu"));
    } else if (hasRow(id)) {
        properties = propertiesOfRow(row(id));
    }
    if (!names.isEmpty()) {
        properties.removeIf([&names](const auto& property) { return !names.contains(property.key()); });
    }
    return properties;
}

uint StatusMenuModel::GetLayout(int parentId, int recursionDepth, const QStringList& propertyNames,
                                MenuLayout& layout) {
    layout = {parentId, propertiesOf(parentId, propertyNames), {}};
    if (parentId == 0 && recursionDepth != 0) {
        for (int id = m_firstId; hasRow(id); ++id) {
            layout.children.append({id, propertiesOf(id, propertyNames), {}});
        }
    }
    return m_revision;
}

QList<MenuRowProperties> StatusMenuModel::GetGroupProperties(const QList<int>& ids,
                                                             const QStringList& propertyNames) {
    QList<MenuRowProperties> result;
    for (const int id : ids) {
        if (id == 0 || hasRow(id)) {
            result.append({id, propertiesOf(id, propertyNames)});
        }
    }
    return result;
}

QDBusVariant StatusMenuModel::GetProperty(int id, const QString& name) {
    // The bus can't carry an empty value; an empty text stands for what is not there.
    return QDBusVariant(propertiesOf(id, {}).value(name, QString()));
}

void StatusMenuModel::Event(int id, const QString& eventId, const QDBusVariant&, uint) {
    if (eventId == QLatin1String("clicked")) {
        activate(id);
    }
}

QList<int> StatusMenuModel::EventGroup(const QList<MenuEvent>& events) {
    QList<int> unknown;
    for (const MenuEvent& event : events) {
        if (hasRow(event.id)) {
            Event(event.id, event.eventId, event.data, event.timestamp);
        } else {
            unknown.append(event.id);
        }
    }
    return unknown;
}

bool StatusMenuModel::AboutToShow(int) {
    return false;
}

QList<int> StatusMenuModel::AboutToShowGroup(const QList<int>& ids, QList<int>& idErrors) {
    idErrors.clear();
    for (const int id : ids) {
        if (id != 0 && !hasRow(id)) {
            idErrors.append(id);
        }
    }
    return {};
}

/// Acts only after the caller has been answered: the row may end the program.
void StatusMenuModel::activate(int id) {
    if (hasRow(id)) {
        const StatusMenuRow& chosen = row(id);
        if (chosen.isEnabled && chosen.activate) {
            QMetaObject::invokeMethod(this, chosen.activate, Qt::QueuedConnection);
        }
    }
}

} // namespace veslora
