// SPDX-License-Identifier: MIT
// The rack's own gestures: a long press that begins to edit it, the drag that rearranges it, and the press
// that asks for its menu. It lies under the modules as their parent, so that a drag goes on while the page
// turns and the modules change. Main thread only.
#pragma once

#include "VesloraUI/Widgets/RackDrag.h"

#include <QQmlEngine>
#include <QQuickItem>

#include <optional>

namespace veslora {

/// A picture of the dragged widget, drawn under the pointer.
struct RackGhost {
    Q_GADGET
    QML_VALUE_TYPE(rackGhost)
    Q_PROPERTY(QString id MEMBER id FINAL)
    Q_PROPERTY(QString title MEMBER title FINAL)
    Q_PROPERTY(double center MEMBER center FINAL)
    Q_PROPERTY(double width MEMBER width FINAL)
    Q_PROPERTY(bool isWide MEMBER isWide FINAL)
    Q_PROPERTY(bool isHeld MEMBER isHeld FINAL)

  public:
    QString id; ///< of the widget; the last one after a drag, empty before the first
    QString title;
    double center = 0; ///< points from the middle of the rack; where the widget now is, once it was dropped
    double width = 0;  ///< points
    bool isWide = false;
    bool isHeld = false; ///< it is being dragged

    bool operator==(const RackGhost&) const = default;
};

class RackGestures : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(veslora::RackModel* rack MEMBER m_rack REQUIRED FINAL)
    Q_PROPERTY(veslora::RackGhost ghost READ ghost NOTIFY ghostChanged FINAL)

  public:
    /// Seconds and points of a press that begins to edit: how long, and how far the pointer may stray.
    static constexpr double longPress = 0.5;
    static constexpr double longPressRoom = 10;
    /// Points that the pointer has to move before a press becomes a drag.
    static constexpr double dragDistance = 4;
    /// Points by which a module is taken up beyond its sides while it is edited.
    static constexpr double hitMargin = 6;

    explicit RackGestures(QQuickItem* parent = nullptr);
    RackGestures(const RackGestures&) = delete;
    RackGestures& operator=(const RackGestures&) = delete;
    /// Drops what is being dragged where it shows.
    ~RackGestures() override;

    [[nodiscard]] const RackGhost& ghost() const { return m_ghost; }
    /// Also just beside the rack, where a module can be taken up.
    [[nodiscard]] bool contains(const QPointF& point) const override;

  signals:
    void ghostChanged();
    /// The pointer asked for the menu, at that point of this item.
    void menuWanted(double x, double y);

  protected:
    void componentComplete() override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    /// The second press of a double click was told already.
    void mouseDoubleClickEvent(QMouseEvent* /*event*/) override {}
    void mouseUngrabEvent() override;
    /// Sees what the widgets' own controls get as well, and takes nothing from them.
    bool childMouseEventFilter(QQuickItem* child, QEvent* event) override;

  private:
    /// A press on a module that is being edited.
    struct Grip {
        WidgetID id = WidgetID::clock;
        QPointF start;       ///< in this item
        double from = 0;     ///< points from the middle of the rack
        bool isDrag = false; ///< it has moved far enough
    };
    void beginLongPress(QPointF point);
    void follow(QPointF point);
    void endPress();
    void rackChanged();
    void showGhost();
    [[nodiscard]] std::optional<WidgetID> moduleAt(QPointF point, double margin) const;
    [[nodiscard]] bool isEmpty() const;
    [[nodiscard]] double fromMiddle(double x) const { return x - width() / 2; }

    RackModel* m_rack = nullptr;
    std::optional<RackDrag> m_drag;
    std::optional<Grip> m_grip;
    RackGhost m_ghost;
    Task m_longPressTask;
    QPointF m_longPressStart;
};

} // namespace veslora
