// SPDX-License-Identifier: MIT
// A countdown, ready for display in the widget and in the wings. What was shown last stays when there is none
// any more, so that a view that fades out does not change.
#pragma once

#include "VesloraUI/Support/Presenter.h"
#include "VesloraUI/Timer/TimerModel.h"

namespace veslora {

class RunningTimerPresenter : public veslora::Presenter {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(veslora::TimerModel* timer MEMBER m_timer REQUIRED FINAL)
    /// Seconds since 1970, from the view's timeline: everything is read again with each.
    Q_PROPERTY(double date MEMBER m_date WRITE setDate REQUIRED FINAL)
    /// Points that the whole fuse takes.
    Q_PROPERTY(double fuseWidth MEMBER m_fuseWidth WRITE setFuseWidth REQUIRED FINAL)
    /// Whole seconds left, rounded up as they are displayed.
    Q_PROPERTY(double remaining READ remaining NOTIFY changed FINAL)
    /// How much of the fuse is left, to half a point of it.
    Q_PROPERTY(double fraction READ fraction NOTIFY changed FINAL)
    Q_PROPERTY(double timeOpacity READ timeOpacity NOTIFY changed FINAL)
    Q_PROPERTY(bool isPaused READ isPaused NOTIFY changed FINAL)
    Q_PROPERTY(bool isUrgent READ isUrgent NOTIFY changed FINAL)

  public:
    using Presenter::Presenter;

    void setDate(double date);
    void setFuseWidth(double width);

    [[nodiscard]] double remaining() const { return m_shown.remaining; }
    [[nodiscard]] double fraction() const { return m_shown.fraction; }
    [[nodiscard]] double timeOpacity() const { return m_shown.timeOpacity; }
    [[nodiscard]] bool isPaused() const { return m_shown.isPaused; }
    [[nodiscard]] bool isUrgent() const { return m_shown.isUrgent; }

    Q_INVOKABLE void togglePause();

  protected:
    void start() override;
    void read() override;

  private:
    struct Shown {
        double remaining = 0;
        double fraction = 0;
        double timeOpacity = 1;
        bool isPaused = false;
        bool isUrgent = false;
        bool operator==(const Shown&) const = default;
    };
    void readAt(Timestamp date);

    TimerModel* m_timer = nullptr;
    double m_date = 0;
    double m_fuseWidth = 0;
    Shown m_shown;
};

} // namespace veslora
