// SPDX-License-Identifier: MIT
// A list for views that takes a whole new list at a time and signals the difference by id, so that a row that
// stays keeps its place on screen, its hover and its press. Main thread only.
#pragma once

#include <QAbstractListModel>
#include <QVariant>

#include <algorithm>
#include <utility>
#include <vector>

namespace veslora {

/// `Row` is a Q_GADGET with an `id` and an equality. `roleName` is what delegates call it.
template <class Row>
class RowModel : public QAbstractListModel {
  public:
    explicit RowModel(QByteArray roleName, QObject* parent = nullptr)
        : QAbstractListModel(parent), m_roleName(std::move(roleName)) {}

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
    }
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override {
        return index.isValid() && role == Qt::UserRole ? QVariant::fromValue(at(index.row())) : QVariant();
    }
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override { return {{Qt::UserRole, m_roleName}}; }
    [[nodiscard]] const std::vector<Row>& rows() const { return m_rows; }

    /// Makes the list equal to `rows`, in whose ids none repeats.
    void assign(std::vector<Row> rows) {
        removeMissing(rows);
        for (int target = 0; target < static_cast<int>(rows.size()); ++target) {
            place(rows[static_cast<std::size_t>(target)], target);
        }
    }

  private:
    using Iterator = typename std::vector<Row>::iterator;

    [[nodiscard]] const Row& at(int index) const { return m_rows[static_cast<std::size_t>(index)]; }
    [[nodiscard]] Iterator position(int index) { return m_rows.begin() + index; }

    void removeMissing(const std::vector<Row>& rows) {
        for (int i = rowCount() - 1; i >= 0; --i) {
            if (std::ranges::find(rows, at(i).id, &Row::id) == rows.end()) {
                beginRemoveRows({}, i, i);
                m_rows.erase(position(i));
                endRemoveRows();
            }
        }
    }

    void place(Row& row, int target) {
        const auto found = std::ranges::find(m_rows, row.id, &Row::id);
        const int current = static_cast<int>(found - m_rows.begin());
        if (found == m_rows.end()) {
            beginInsertRows({}, target, target);
            m_rows.insert(position(target), std::move(row));
            endInsertRows();
            return;
        }
        if (current != target) {
            // Rows before the target are settled, so that the row can only come from further down.
            beginMoveRows({}, current, current, {}, target);
            std::rotate(position(target), position(current), position(current + 1));
            endMoveRows();
        }
        if (at(target) != row) {
            *position(target) = std::move(row);
            emit dataChanged(index(target), index(target));
        }
    }

    QByteArray m_roleName;
    std::vector<Row> m_rows;
};

} // namespace veslora
