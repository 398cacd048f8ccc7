// SPDX-License-Identifier: MIT
// Reports the movement of a wheel or a touchpad over it as whole steps. Invisible: lay it over the
// control that it serves. Main thread only.
#pragma once

#include "VesloraCore/Widgets/ScrollStepper.h"

#include <QQuickItem>

namespace veslora {

/// Takes vertical movement alone; what moves sideways goes to whatever lies below. A wheel turned away from
/// the user, or fingers moved that way, make steps above 0, whichever direction the desktop scrolls for it.
class ScrollWheelCatcher : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT

  public:
    using QQuickItem::QQuickItem;

  signals:
    /// Never 0.
    void stepped(int steps);

  protected:
    void wheelEvent(QWheelEvent* event) override;

  private:
    ScrollStepper m_stepper;
};

} // namespace veslora
