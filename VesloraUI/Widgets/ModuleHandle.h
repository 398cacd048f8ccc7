// SPDX-License-Identifier: MIT
// A module of the rack while it is edited, as assistive programs meet it: its name, its place, and what can
// be done to it without a drag. Invisible: lay it over the module, whose controls then no longer notice the
// pointer. Main thread only.
#pragma once

#include "VesloraUI/Widgets/RackModel.h"

#include <QQmlEngine>
#include <QQuickItem>

namespace veslora {

class ModuleHandle : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(veslora::RackModel* rack MEMBER m_rack REQUIRED FINAL)
    /// The widget's id, as in "claudeUsage".
    Q_PROPERTY(QString widget MEMBER m_widget REQUIRED FINAL)

  public:
    explicit ModuleHandle(QQuickItem* parent = nullptr);

    [[nodiscard]] RackModel& rack() const { return *m_rack; }
    /// Absent for a text that names no widget.
    [[nodiscard]] std::optional<WidgetID> id() const;
    /// As in "Agent Usage".
    [[nodiscard]] QString name() const;
    /// As in "Place 2 of 4 on page 1 of 2"; empty for one that is not in the rack.
    [[nodiscard]] QString place() const;

  protected:
    /// The pointer over it means the module, not what the widget below has to say of its controls.
    void hoverEnterEvent(QHoverEvent* event) override { event->accept(); }
    void hoverMoveEvent(QHoverEvent* event) override { event->accept(); }

  private:
    RackModel* m_rack = nullptr;
    QString m_widget;
};

} // namespace veslora
