// SPDX-License-Identifier: MIT
#include "VesloraLinux/X11/PanelPointer.h"

#include "VesloraLinux/X11/PanelPlacement.h"

#include <QEnterEvent>
#include <QGuiApplication>
#include <QMouseEvent>

#include <cmath>

namespace veslora {

PanelPointer::PanelPointer(X11Panel& panel, Scheduler& scheduler) : m_panel(panel), m_scheduler(scheduler) {
    m_panel.window()->installEventFilter(this);
}

std::optional<Point> PanelPointer::positionOn(const ScreenInfo& screen) const {
    if (!m_place || !m_panel.screen() || m_panel.screen()->name != screen.name) {
        return std::nullopt;
    }
    return PanelPlacement::placeOfPixel(screen, *m_place);
}

bool PanelPointer::isButtonDown() const {
    return QGuiApplication::mouseButtons() != Qt::NoButton;
}

void PanelPointer::setTracking(bool isTracking) {
    m_isTracking = isTracking;
}

void PanelPointer::setWatchingPresses(bool) {}

/// The native pixel of the screen under a place in the window, which the toolkit tells in points.
QPoint PanelPointer::pixelAt(QPointF place) const {
    constexpr double tolerance = 1e-3; // what is lost where a pixel was divided by the scale
    const QPointF native = (place + m_panel.windowPlace().topLeft()) * m_panel.window()->devicePixelRatio();
    return {static_cast<int>(std::floor(native.x() + tolerance)),
            static_cast<int>(std::floor(native.y() + tolerance))};
}

bool PanelPointer::eventFilter(QObject*, QEvent* event) {
    switch (event->type()) {
    case QEvent::Enter:
        pointerMoved(pixelAt(static_cast<QEnterEvent*>(event)->position()));
        break;
    case QEvent::MouseButtonRelease:
        QMetaObject::invokeMethod(this, &Pointer::released, Qt::QueuedConnection);
        [[fallthrough]];
    case QEvent::MouseMove:
    case QEvent::MouseButtonPress:
        pointerMoved(pixelAt(static_cast<QMouseEvent*>(event)->position()));
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
void PanelPointer::pointerMoved(std::optional<QPoint> place) {
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
