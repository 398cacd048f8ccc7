// SPDX-License-Identifier: MIT
// Turns sideways movements over the rack into steps from page to page: of a wheel, of two fingers on a
// touchpad, and of one on a touchscreen. It draws nothing. Main thread only.
#pragma once

#include "VesloraCore/Widgets/FingerSwipe.h"
#include "VesloraCore/Widgets/PageSwipe.h"
#include "VesloraUI/Widgets/ScrollReader.h"

#include <QPointF>
#include <QQuickItem>

#include <optional>

class QTouchEvent;

namespace veslora {

/// Holds the modules as its children: a finger that went down on one of their keys and then moves sideways is
/// taken from the key, which does not count as pressed. Events of a wheel reach it once those above have
/// ignored them.
class PageSwipeMonitor : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    /// Whether there is a page to turn to. Where it is not, every event goes to whatever lies below.
    Q_PROPERTY(bool isActive MEMBER m_isActive NOTIFY isActiveChanged FINAL)
    /// Whether fingers on a touchscreen turn pages too; not while they move the modules themselves.
    Q_PROPERTY(bool takesTouch MEMBER m_takesTouch NOTIFY takesTouchChanged FINAL)

  public:
    explicit PageSwipeMonitor(QQuickItem* parent = nullptr);

  signals:
    void isActiveChanged();
    void takesTouchChanged();
    /// 1 for the next page, -1 for the one before.
    void stepped(int step);

  protected:
    void wheelEvent(QWheelEvent* event) override;
    void touchEvent(QTouchEvent* event) override;
    bool childMouseEventFilter(QQuickItem* child, QEvent* event) override;
    void touchUngrabEvent() override;

  private:
    struct Finger {
        int id = 0;
        QPointF start; ///< in the scene
        FingerSwipe swipe;
    };
    [[nodiscard]] std::optional<int> stepOf(const QWheelEvent& event);
    [[nodiscard]] bool follow(const QTouchEvent& event);

    bool m_isActive = false;
    bool m_takesTouch = true;
    ScrollReader m_reader;
    PageSwipe m_swipe;
    std::optional<Finger> m_finger;
};

} // namespace veslora
