// SPDX-License-Identifier: MIT
// The menu behind the status icon, as the desktop's panel reads it over the bus. Main thread only.
#pragma once

#include "VesloraLinux/DBus/StatusTypes.h"
#include "VesloraUI/Platform/StatusMenu.h"

#include <QObject>
#include <QStringList>

#include <vector>

namespace veslora {

/// Properties, slots and signals carry the names that the interface gives them. Row 0 is the menu itself; the
/// rows that the user sees count from 1, and on from the last one when they are replaced: what is chosen from
/// rows that are gone meanwhile must not count for the ones in their place.
class StatusMenuModel final : public QObject {
    Q_OBJECT
    Q_PROPERTY(uint Version READ version CONSTANT)
    Q_PROPERTY(QString TextDirection READ textDirection CONSTANT)
    Q_PROPERTY(QString Status READ status CONSTANT)
    Q_PROPERTY(QStringList IconThemePath READ iconThemePath CONSTANT)

  public:
    void setRows(std::vector<StatusMenuRow> rows);
    /// Acts as if the user had chosen the first row that can be chosen.
    void activateFirstRow();

    [[nodiscard]] uint version() const { return 3; }
    [[nodiscard]] QString textDirection() const;
    [[nodiscard]] QString status() const { return QStringLiteral("normal"); }
    [[nodiscard]] QStringList iconThemePath() const { return {}; }

  public slots:
    uint GetLayout(int parentId, int recursionDepth, const QStringList& propertyNames,
                   veslora::MenuLayout& layout);
    QList<veslora::MenuRowProperties> GetGroupProperties(const QList<int>& ids,
                                                         const QStringList& propertyNames);
    QDBusVariant GetProperty(int id, const QString& name);
    void Event(int id, const QString& eventId, const QDBusVariant& data, uint timestamp);
    QList<int> EventGroup(const QList<veslora::MenuEvent>& events);
    bool AboutToShow(int id);
    QList<int> AboutToShowGroup(const QList<int>& ids, QList<int>& idErrors);

  signals:
    void LayoutUpdated(uint revision, int parent);

  private:
    [[nodiscard]] bool hasRow(int id) const { return id >= m_firstId && id < idAfterLast(); }
    [[nodiscard]] int idAfterLast() const { return m_firstId + static_cast<int>(m_rows.size()); }
    [[nodiscard]] const StatusMenuRow& row(int id) const {
        return m_rows[static_cast<std::size_t>(id - m_firstId)];
    }
    [[nodiscard]] QVariantMap propertiesOf(int id, const QStringList& names) const;
    void activate(int id);

    std::vector<StatusMenuRow> m_rows;
    int m_firstId = 1;
    uint m_revision = 1;
};

} // namespace veslora
