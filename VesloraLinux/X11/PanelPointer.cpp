// SPDX-License-Identifier: MIT
#include "VesloraLinux/X11/PanelPointer.h"

#include <QEnterEvent>
#include <QGuiApplication>
#include <QMouseEvent>

namespace veslora {

PanelPointer::PanelPointer(X11Panel& panel, Scheduler& scheduler) : m_panel(panel), m_scheduler(scheduler) {
    m_panel.window()->installEventFilter(this);
}

std::optional<Point> PanelPointer::positionOn(const ScreenInfo& screen) const {
    if (!m_place || !m_panel.screen() || m_panel.screen()->name != screen.name) {
        return std::nullopt;
    }
    return Point{m_place->x(), screen.metrics.frame.height - m_place->y()};
}

bool PanelPointer::isButtonDown() const {
    return QGuiApplication::mouseButtons() != Qt::NoButton;
}

void PanelPointer::setTracking(bool isTracking) {
    m_isTracking = isTracking;
}

void PanelPointer::setWatchingPresses(bool) {}

bool PanelPointer::eventFilter(QObject*, QEvent* event) {
    const QPointF corner = m_panel.windowPlace().topLeft();
    switch (event->type()) {
    case QEvent::Enter:
        pointerMoved(static_cast<QEnterEvent*>(event)->position() + corner);
        break;
    case QEvent::MouseMove:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
        pointerMoved(static_cast<QMouseEvent*>(event)->position() + corner);
        break;
    case QEvent::Leave:
        // While a button is held the window goes on hearing of the pointer, wherever it is.
        if (!isButtonDown()) {
            pointerMoved(std::nullopt);
        }
        break;
    case QEvent::Hide:
        pointerMoved(std::nullopt);
        break;
    default:
        break;
    }
    return false;
}

/// Tells the first movement at once and what follows it once a frame.
void PanelPointer::pointerMoved(std::optional<QPointF> place) {
    m_place = place;
    if (!m_isTracking) {
        return;
    }
    if (m_frame.isActive()) {
        m_hasMoved = true;
        return;
    }
    constexpr double frame = 1.0 / 60;
    m_frame = m_scheduler.after(frame, [this] {
        if (std::exchange(m_hasMoved, false)) {
            pointerMoved(m_place);
        }
    });
    emit moved();
}

} // namespace veslora
