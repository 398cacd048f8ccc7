// SPDX-License-Identifier: MIT
#include "VesloraUI/Style/KeyAccessible.h"

#include "VesloraUI/Style/KeyItem.h"

namespace veslora {

namespace {

void tell(KeyItem& key, QAccessible::State changed) {
    if (QAccessible::isActive()) {
        QAccessibleStateChangeEvent event(&key, changed);
        QAccessible::updateAccessibility(&event);
    }
}

} // namespace

void KeyAccessible::tellEnabledChanged(KeyItem& key) {
    QAccessible::State changed;
    changed.disabled = true;
    tell(key, changed);
}

void KeyAccessible::tellSelectedChanged(KeyItem& key) {
    QAccessible::State changed;
    changed.checkable = true;
    changed.checked = true;
    tell(key, changed);
}

KeyAccessible::KeyAccessible(KeyItem& key) : ItemAccessible(key) {}

KeyItem* KeyAccessible::key() const {
    return static_cast<KeyItem*>(object());
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
    QAccessible::State state = ItemAccessible::state();
    state.pressed = key()->isPressed();
    state.checkable = key()->isSelected();
    state.checked = key()->isSelected();
    return state;
}

QStringList KeyAccessible::actionNames() const {
    return key()->isEnabled() ? QStringList{pressAction()} : QStringList();
}

void KeyAccessible::doAction(const QString& actionName) {
    if (actionName == pressAction()) {
        key()->act();
    }
}

} // namespace veslora
