// SPDX-License-Identifier: MIT
#include "VesloraUI/Style/ItemAccessible.h"

#include <QQuickItem>
#include <QQuickWindow>

namespace veslora {

ItemAccessible::ItemAccessible(QQuickItem& item) : QAccessibleObject(&item) {}

QQuickItem& ItemAccessible::item() const {
    return *static_cast<QQuickItem*>(object());
}

QWindow* ItemAccessible::window() const {
    return item().window();
}

QAccessibleInterface* ItemAccessible::parent() const {
    for (QQuickItem* above = item().parentItem(); above; above = above->parentItem()) {
        if (auto* const interface = QAccessible::queryAccessibleInterface(above)) {
            return interface;
        }
    }
    return QAccessible::queryAccessibleInterface(item().window());
}

QAccessible::State ItemAccessible::state() const {
    QAccessible::State state;
    state.disabled = !item().isEnabled();
    state.invisible = !item().isVisible() || qFuzzyIsNull(item().opacity());
    const QQuickWindow* const window = item().window();
    state.offscreen =
        !window ||
        !QRectF({}, QSizeF(window->size())).intersects(item().mapRectToScene(item().boundingRect()));
    return state;
}

QRect ItemAccessible::rect() const {
    const QRect inScene = item().mapRectToScene(item().boundingRect()).toRect();
    const QQuickWindow* const window = item().window();
    return window ? QRect(window->mapToGlobal(inScene.topLeft()), inScene.size()) : QRect();
}

void* ItemAccessible::interface_cast(QAccessible::InterfaceType type) {
    return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
}

} // namespace veslora
