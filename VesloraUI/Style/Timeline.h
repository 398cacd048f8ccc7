// SPDX-License-Identifier: MIT
// Time in views: a date that moves in steps of a period while the view that holds it is on screen.
#pragma once

#include "VesloraCore/Timestamp.h"
#include "VesloraUI/Style/ViewEnvironment.h"

#include <QPointer>
#include <QQuickItem>

namespace veslora {

/// An invisible item. Put it into the view whose time it is: it rests while that view is invisible, and
/// shows the current date at once when the view comes back. Equal periods tick together.
class Timeline : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_DISABLE_COPY_MOVE(Timeline)
    /// Seconds between two ticks; above 0.
    Q_PROPERTY(double period READ period WRITE setPeriod NOTIFY periodChanged FINAL)
    /// Seconds since 1970.
    Q_PROPERTY(double date READ date NOTIFY dateChanged FINAL)

  public:
    using QQuickItem::QQuickItem;
    ~Timeline() override;

    [[nodiscard]] double period() const { return m_period; }
    void setPeriod(double period);
    [[nodiscard]] Timestamp date() const { return m_date; }
    [[nodiscard]] bool isTicking() const { return m_ticker != nullptr; }

  signals:
    void periodChanged();
    void dateChanged();

  protected:
    void componentComplete() override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;

  private:
    void update();
    void start();
    void stop();
    void tick();

    double m_period = 1;
    Timestamp m_date = 0;
    bool m_isComplete = false;
    QPointer<TimelineTicker> m_ticker;
};

} // namespace veslora
