// SPDX-License-Identifier: MIT
#include "VesloraUI/Style/ScrollWheelCatcher.h"

#include <QWheelEvent>

#include <cstdlib>

namespace veslora {

namespace {

constexpr int notch = 120; ///< eighths of a degree, by which Qt tells of one notch of a wheel

struct Movement {
    double delta = 0;
    bool isPrecise = false;
};

/// Points where they are known. Touchpads and wheels that turn freely mostly give fractions of a notch.
Movement movementOf(const QWheelEvent& event) {
    if (event.pixelDelta().y() != 0) {
        return {static_cast<double>(event.pixelDelta().y()), true};
    }
    const int angle = event.angleDelta().y();
    return {angle * ScrollStepper::pointsPerStep / notch, angle % notch != 0};
}

} // namespace

void ScrollWheelCatcher::wheelEvent(QWheelEvent* event) {
    const QPoint angle = event->angleDelta();
    // What moves nothing tells of the beginning or the end of a gesture, which may go anywhere.
    if (angle.isNull() || std::abs(angle.x()) > std::abs(angle.y())) {
        event->ignore();
        return;
    }
    const Movement movement = movementOf(*event);
    const double delta = event->inverted() ? -movement.delta : movement.delta;
    if (const int steps = m_stepper.steps(delta, movement.isPrecise); steps != 0) {
        emit stepped(steps);
    }
    event->accept();
}

} // namespace veslora
