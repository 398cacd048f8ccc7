// SPDX-License-Identifier: MIT
#include "VesloraUI/Style/KeyAccessible.h"

#include "VesloraUI/Style/KeyItem.h"

namespace veslora {

void KeyAccessible::tellEnabledChanged(KeyItem& key) {
    if (QAccessible::isActive()) {
        QAccessible::State changed;
        changed.disabled = true;
        QAccessibleStateChangeEvent event(&key, changed);
        QAccessible::updateAccessibility(&event);
    }
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
