// SPDX-License-Identifier: MIT
#include "VesloraUI/Style/KeyItem.h"

#include "VesloraUI/Platform/Observable.h"
#include "VesloraUI/Style/KeyAccessible.h"

namespace veslora {

namespace {

/// Qt keeps the 32 bits of the window system's time in a wider number.
std::uint32_t eventTime(const QMouseEvent& event) {
    return static_cast<std::uint32_t>(event.timestamp());
}

} // namespace

KeyItem::KeyItem(QQuickItem* parent) : QQuickItem(parent) {
    setAcceptedMouseButtons(Qt::LeftButton);
    ItemAccessible::install<KeyAccessible, KeyItem>();
}

void KeyItem::setHelpText(const QString& text) {
    if (assign(this, m_helpText, text, &KeyItem::helpTextChanged)) {
        setAcceptHoverEvents(!text.isEmpty());
    }
}

void KeyItem::setJudge(PressJudge* judge) {
    if (m_judge != judge) {
        m_judge = judge;
        emit judgeChanged();
    }
}

void KeyItem::setSelected(bool isSelected) {
    if (assign(this, m_isSelected, isSelected, &KeyItem::isSelectedChanged)) {
        KeyAccessible::tellSelectedChanged(*this);
    }
}

void KeyItem::act() {
    if (isEnabled() && (!m_judge || m_judge->act())) {
        emit clicked();
    }
}

void KeyItem::mousePressEvent(QMouseEvent* event) {
    setDown(true, true);
    // Last, as it may find that the key must not live.
    if (m_judge) {
        m_judge->press(eventTime(*event));
    }
}

void KeyItem::mouseMoveEvent(QMouseEvent* event) {
    setDown(m_isDown, contains(event->position()));
}

void KeyItem::mouseReleaseEvent(QMouseEvent* event) {
    const bool isClick = m_isDown && contains(event->position());
    const bool counts = !m_judge || m_judge->release(eventTime(*event));
    setDown(false, false);
    // Last, as a listener may remove the key.
    if (isClick && counts) {
        emit clicked();
    }
}

void KeyItem::mouseUngrabEvent() {
    setDown(false, false);
}

void KeyItem::setDown(bool isDown, bool isInside) {
    const bool wasPressed = isPressed();
    m_isDown = isDown;
    m_isInside = isInside;
    if (wasPressed != isPressed()) {
        emit isPressedChanged();
    }
}

void KeyItem::hoverEnterEvent(QHoverEvent* /*event*/) {
    assign(this, m_isHovered, true, &KeyItem::isHoveredChanged);
}

void KeyItem::hoverLeaveEvent(QHoverEvent* /*event*/) {
    assign(this, m_isHovered, false, &KeyItem::isHoveredChanged);
}

void KeyItem::itemChange(ItemChange change, const ItemChangeData& data) {
    QQuickItem::itemChange(change, data);
    if (change == ItemEnabledHasChanged) {
        // A press that began on a live key must not end on it after it was dead in between.
        setDown(false, false);
        KeyAccessible::tellEnabledChanged(*this);
    } else if (change == ItemVisibleHasChanged && !isVisible()) {
        assign(this, m_isHovered, false, &KeyItem::isHoveredChanged);
    }
}

} // namespace veslora
