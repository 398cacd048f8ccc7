// SPDX-License-Identifier: MIT
#include "VesloraUI/Style/KeyAccessible.h"

#include "VesloraUI/Style/KeyItem.h"

#include <QQuickWindow>

namespace veslora {

namespace {

/// Qt asks with the name of the object's class, then with that of each class above it.
QAccessibleInterface* makeInterface(const QString& className, QObject* object) {
    auto* key = className == QLatin1String(KeyItem::staticMetaObject.className())
                    ? qobject_cast<KeyItem*>(object)
                    : nullptr;
    return key ? new KeyAccessible(*key) : nullptr;
}

} // namespace

void KeyAccessible::install() {
    [[maybe_unused]] static const bool isInstalled = [] {
        QAccessible::installFactory(makeInterface);
        return true;
    }();
}

void KeyAccessible::tellEnabledChanged(KeyItem& key) {
    if (QAccessible::isActive()) {
        QAccessible::State changed;
        changed.disabled = true;
        QAccessibleStateChangeEvent event(&key, changed);
        QAccessible::updateAccessibility(&event);
    }
}

KeyAccessible::KeyAccessible(KeyItem& key) : QAccessibleObject(&key) {}

KeyItem* KeyAccessible::key() const {
    return static_cast<KeyItem*>(object());
}

QWindow* KeyAccessible::window() const {
    return key()->window();
}

/// The nearest item above that has an accessible form, else the window.
QAccessibleInterface* KeyAccessible::parent() const {
    for (QQuickItem* item = key()->parentItem(); item; item = item->parentItem()) {
        if (auto* const interface = QAccessible::queryAccessibleInterface(item)) {
            return interface;
        }
    }
    return QAccessible::queryAccessibleInterface(key()->window());
}

QString KeyAccessible::text(QAccessible::Text kind) const {
    switch (kind) {
    case QAccessible::Name:
        return key()->text();
    case QAccessible::Description:
        return key()->helpText();
    default:
        return {};
    }
}

QAccessible::State KeyAccessible::state() const {
    QAccessible::State state;
    state.disabled = !key()->isEnabled();
    state.pressed = key()->isPressed();
    state.invisible = !key()->isVisible() || qFuzzyIsNull(key()->opacity());
    const QQuickWindow* const window = key()->window();
    state.offscreen =
        !window ||
        !QRectF({}, QSizeF(window->size())).intersects(key()->mapRectToScene(key()->boundingRect()));
    return state;
}

QRect KeyAccessible::rect() const {
    const QRect inScene = key()->mapRectToScene(key()->boundingRect()).toRect();
    const QQuickWindow* const window = key()->window();
    return window ? QRect(window->mapToGlobal(inScene.topLeft()), inScene.size()) : QRect();
}

QStringList KeyAccessible::actionNames() const {
    return key()->isEnabled() ? QStringList{pressAction()} : QStringList();
}

void KeyAccessible::doAction(const QString& actionName) {
    if (actionName == pressAction()) {
        key()->act();
    }
}

void* KeyAccessible::interface_cast(QAccessible::InterfaceType type) {
    return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
}

} // namespace veslora
