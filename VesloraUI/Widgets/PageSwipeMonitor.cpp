// SPDX-License-Identifier: MIT
#include "VesloraUI/Widgets/PageSwipeMonitor.h"

#include "VesloraUI/Style/ViewEnvironment.h"

#include <QPointingDevice>
#include <QQmlEngine>
#include <QTouchEvent>
#include <QWheelEvent>

#include <algorithm>

namespace veslora {

namespace {

/// The toolkit knows some touchpads by itself: those for which the server tells of gestures.
ScrollSource sourceOf(const QWheelEvent& event, ScrollDevices& devices) {
    const QPointingDevice* const device = event.pointingDevice();
    if (!device) {
        return ScrollSource::unknown;
    }
    return device->type() == QInputDevice::DeviceType::TouchPad ? ScrollSource::fingers
                                                                : devices.sourceOf(*device);
}

bool isTouch(const QEvent& event) {
    switch (event.type()) {
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TouchCancel:
        return true;
    default:
        return false;
    }
}

} // namespace

PageSwipeMonitor::PageSwipeMonitor(QQuickItem* parent) : QQuickItem(parent) {
    setAcceptTouchEvents(true);
    setFiltersChildMouseEvents(true);
}

void PageSwipeMonitor::wheelEvent(QWheelEvent* event) {
    const auto step = m_isActive ? stepOf(*event) : std::nullopt;
    event->setAccepted(step.has_value());
    if (step.value_or(0) != 0) {
        emit stepped(*step);
    }
}

std::optional<int> PageSwipeMonitor::stepOf(const QWheelEvent& event) {
    ScrollDevices& devices = ViewEnvironment::of(qmlEngine(this)).scrollDevices();
    const auto step = m_swipe.handle(m_reader.read(event, sourceOf(event, devices)));
    if (step) {
        m_reader.used();
    }
    return step;
}

/// Of a finger that went down where nothing else takes it, or that was taken from what did.
void PageSwipeMonitor::touchEvent(QTouchEvent* event) {
    if (!m_isActive || !m_takesTouch) {
        event->ignore();
        return;
    }
    std::ignore = follow(*event);
    event->accept();
}

bool PageSwipeMonitor::childMouseEventFilter(QQuickItem* /*child*/, QEvent* event) {
    if (!m_isActive || !m_takesTouch || !isTouch(*event) || !follow(*static_cast<QTouchEvent*>(event))) {
        return false;
    }
    event->accept();
    return true;
}

void PageSwipeMonitor::touchUngrabEvent() {
    m_finger.reset();
}

/// True once the finger means the page.
bool PageSwipeMonitor::follow(const QTouchEvent& event) {
    const auto& points = event.points();
    if (event.type() == QEvent::TouchBegin) {
        m_finger = Finger{points.front().id(), points.front().scenePosition(), {}};
    }
    if (!m_finger || event.type() == QEvent::TouchCancel) {
        m_finger.reset();
        return false;
    }
    const auto point = std::ranges::find(points, m_finger->id, &QEventPoint::id);
    if (point == points.end()) {
        return m_finger->swipe.isSideways();
    }
    const QPointF way = point->scenePosition() - m_finger->start;
    const int step = m_finger->swipe.moveTo(way.x(), way.y());
    const bool isSideways = m_finger->swipe.isSideways();
    if (point->state() == QEventPoint::Released) {
        m_finger.reset();
    }
    if (step != 0) {
        emit stepped(step);
    }
    return isSideways;
}

} // namespace veslora
