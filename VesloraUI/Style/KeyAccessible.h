// SPDX-License-Identifier: MIT
// A key as assistive programs meet it. Qt Quick's own form offers the press of a disabled item and does not
// say that it is disabled (Qt 6.4); this one does neither. Main thread only.
#pragma once

#include <QAccessibleObject>

namespace veslora {

class KeyItem;

class KeyAccessible final : public QAccessibleObject, public QAccessibleActionInterface {
  public:
    /// Makes this the form of every key from now on; again does nothing.
    static void install();
    static void tellEnabledChanged(KeyItem& key);

    explicit KeyAccessible(KeyItem& key);

    [[nodiscard]] QWindow* window() const override;
    [[nodiscard]] QAccessibleInterface* parent() const override;
    [[nodiscard]] QAccessibleInterface* child(int /*index*/) const override { return nullptr; }
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* /*child*/) const override { return -1; }
    [[nodiscard]] QString text(QAccessible::Text kind) const override;
    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::Button; }
    [[nodiscard]] QAccessible::State state() const override;
    /// On the whole desktop, as Qt counts it.
    [[nodiscard]] QRect rect() const override;

    [[nodiscard]] QStringList actionNames() const override;
    void doAction(const QString& actionName) override;
    [[nodiscard]] QStringList keyBindingsForAction(const QString& /*actionName*/) const override {
        return {};
    }

  protected:
    void* interface_cast(QAccessible::InterfaceType type) override;

  private:
    [[nodiscard]] KeyItem* key() const;
};

} // namespace veslora
