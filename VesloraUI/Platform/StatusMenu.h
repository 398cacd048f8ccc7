// SPDX-License-Identifier: MIT
// The seam for the program's icon among the desktop's status items, and the menu behind it.
#pragma once

#include <QString>

#include <functional>
#include <vector>

namespace veslora {

/// One row of the menu. A row without text is a divider.
struct StatusMenuRow {
    QString text;
    QString shortcut; ///< as QKeySequence reads it, such as "Ctrl+Q"; empty for none
    bool isEnabled = true;
    std::function<void()> activate;
};

class StatusMenu {
  public:
    virtual ~StatusMenu() = default;

    /// Shows the item, or other rows behind it. On a desktop that has no place for one nothing happens until
    /// it gets one. A choice of a row that was replaced before it was heard of does nothing.
    virtual void show(const QString& title, const QString& symbol, std::vector<StatusMenuRow> rows) = 0;
};

} // namespace veslora
