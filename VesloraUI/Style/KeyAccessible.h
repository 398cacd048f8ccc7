// SPDX-License-Identifier: MIT
// A key as assistive programs meet it. Qt Quick's own form offers the press of a disabled item and does not
// say that it is disabled (Qt 6.4); this one does neither. Main thread only.
#pragma once

#include "VesloraUI/Style/ItemAccessible.h"

namespace veslora {

class KeyItem;

class KeyAccessible final : public ItemAccessible {
  public:
    static void tellEnabledChanged(KeyItem& key);
    static void tellSelectedChanged(KeyItem& key);

    explicit KeyAccessible(KeyItem& key);

    [[nodiscard]] QString text(QAccessible::Text kind) const override;
    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::Button; }
    [[nodiscard]] QAccessible::State state() const override;

    [[nodiscard]] QStringList actionNames() const override;
    void doAction(const QString& actionName) override;

  private:
    [[nodiscard]] KeyItem* key() const;
};

} // namespace veslora
