// SPDX-License-Identifier: MIT
#include "VesloraUI/Style/FirstFrame.h"

#include "VesloraUI/Platform/Observable.h"

#include <QQuickWindow>

namespace veslora {

void FirstFrame::setItem(QQuickItem* item) {
    if (m_item == item) {
        return;
    }
    if (m_item) {
        disconnect(m_item, nullptr, this, nullptr);
    }
    m_item = item;
    if (item) {
        connect(item, &QQuickItem::visibleChanged, this, &FirstFrame::update);
        connect(item, &QQuickItem::windowChanged, this, &FirstFrame::update);
    }
    emit itemChanged();
    update();
}

void FirstFrame::componentComplete() {
    if (!m_item) {
        setItem(qobject_cast<QQuickItem*>(parent()));
    }
}

void FirstFrame::update() {
    disconnect(m_frame);
    assign(this, m_hasPassed, false, &FirstFrame::hasPassedChanged);
    if (m_item && m_item->isVisible() && m_item->window()) {
        m_frame = connect(m_item->window(), &QQuickWindow::frameSwapped, this, [this] {
            disconnect(m_frame);
            assign(this, m_hasPassed, true, &FirstFrame::hasPassedChanged);
        });
    }
}

} // namespace veslora
