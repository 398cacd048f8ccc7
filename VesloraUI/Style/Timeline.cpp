// SPDX-License-Identifier: MIT
#include "VesloraUI/Style/Timeline.h"

#include "VesloraUI/Platform/Observable.h"
#include "VesloraUI/Style/ViewEnvironment.h"

#include <QQmlEngine>

namespace veslora {

Timeline::~Timeline() {
    stop();
}

void Timeline::setPeriod(double period) {
    if (assign(this, m_period, period, &Timeline::periodChanged) && m_ticker) {
        stop();
        update();
    }
}

void Timeline::componentComplete() {
    QQuickItem::componentComplete();
    m_isComplete = true;
    tick();
    update();
}

void Timeline::itemChange(ItemChange change, const ItemChangeData& data) {
    if (m_isComplete && (change == ItemVisibleHasChanged || change == ItemSceneChange)) {
        update();
    }
    QQuickItem::itemChange(change, data);
}

void Timeline::update() {
    const bool isOnScreen = isVisible() && window();
    if (isOnScreen && !m_ticker) {
        tick();
        start();
    } else if (!isOnScreen) {
        stop();
    }
}

void Timeline::start() {
    m_ticker = &ViewEnvironment::of(qmlEngine(this)).ticker(m_period);
    m_ticker->addListener();
    connect(m_ticker, &TimelineTicker::ticked, this, &Timeline::tick);
}

void Timeline::stop() {
    if (m_ticker) {
        disconnect(m_ticker, nullptr, this, nullptr);
        m_ticker->removeListener();
        m_ticker = nullptr;
    }
}

void Timeline::tick() {
    assign(this, m_date, ViewEnvironment::of(qmlEngine(this)).scheduler().now(), &Timeline::dateChanged);
}

} // namespace veslora
