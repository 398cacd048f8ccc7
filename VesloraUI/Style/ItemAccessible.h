// SPDX-License-Identifier: MIT
// What the accessible forms of our own items have in common: each is one node without children, at its item's
// place in the tree and on the screen. Main thread only.
#pragma once

#include <QAccessible>
#include <QAccessibleObject>

class QQuickItem;

namespace veslora {

class ItemAccessible : public QAccessibleObject, public QAccessibleActionInterface {
  public:
    /// Makes `Form` the accessible form of every `Item` from now on; again does nothing.
    template <class Form, class Item>
    static void install() {
        [[maybe_unused]] static const bool isInstalled = [] {
            QAccessible::installFactory(make<Form, Item>);
            return true;
        }();
    }

    explicit ItemAccessible(QQuickItem& item);

    [[nodiscard]] QWindow* window() const override;
    /// The nearest item above that has an accessible form, else the window.
    [[nodiscard]] QAccessibleInterface* parent() const override;
    [[nodiscard]] QAccessibleInterface* child(int /*index*/) const override { return nullptr; }
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* /*child*/) const override { return -1; }
    [[nodiscard]] QAccessible::State state() const override;
    /// On the whole desktop, as Qt counts it.
    [[nodiscard]] QRect rect() const override;
    [[nodiscard]] QStringList keyBindingsForAction(const QString& /*actionName*/) const override {
        return {};
    }

  protected:
    [[nodiscard]] QQuickItem& item() const;
    void* interface_cast(QAccessible::InterfaceType type) override;

  private:
    /// Qt asks with the name of the object's class, then with that of each class above it.
    template <class Form, class Item>
    static QAccessibleInterface* make(const QString& className, QObject* object) {
        auto* item = className == QLatin1String(Item::staticMetaObject.className())
                         ? qobject_cast<Item*>(object)
                         : nullptr;
        return item ? new Form(*item) : nullptr;
    }
};

} // namespace veslora
