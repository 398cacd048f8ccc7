// SPDX-License-Identifier: MIT
// The accessible form of a module that is being edited. Qt Quick's own knows a fixed set of actions, none of
// which moves a thing (Qt 6.4). Main thread only.
#pragma once

#include "VesloraUI/Style/ItemAccessible.h"
#include "VesloraUI/Widgets/ModuleActions.h"

namespace veslora {

class ModuleHandle;

class ModuleHandleAccessible final : public ItemAccessible {
  public:
    explicit ModuleHandleAccessible(ModuleHandle& handle);

    [[nodiscard]] QString text(QAccessible::Text kind) const override;
    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::ListItem; }

    /// Only those that would change anything.
    [[nodiscard]] QStringList actionNames() const override;
    [[nodiscard]] QString localizedActionName(const QString& name) const override;
    void doAction(const QString& actionName) override;

  private:
    [[nodiscard]] ModuleHandle& handle() const;
};

} // namespace veslora
