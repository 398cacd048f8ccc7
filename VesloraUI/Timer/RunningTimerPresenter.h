// SPDX-License-Identifier: MIT
// A countdown, ready for display in the widget and in the wings. What was shown last stays when there is none
// any more, so that a view on its way out does not change its face.
#pragma once

#include "VesloraUI/Timer/TimerModel.h"

#include <QObject>
#include <QQmlEngine>

namespace veslora {

class RunningTimerPresenter : public QObject, public QQmlParserStatus {
    Q_OBJECT
    QML_ELEMENT
    Q_INTERFACES(QQmlParserStatus)
    Q_PROPERTY(veslora::TimerModel* timer MEMBER m_timer REQUIRED FINAL)
    /// Seconds since 1970, from the view's timeline: everything is read anew with each.
    Q_PROPERTY(double date MEMBER m_date WRITE setDate REQUIRED FINAL)
    /// Points that the whole fuse takes.
    Q_PROPERTY(double fuseWidth MEMBER m_fuseWidth WRITE setFuseWidth REQUIRED FINAL)
    /// Whole seconds left, rounded up as they are displayed.
    Q_PROPERTY(double remaining READ remaining NOTIFY remainingChanged FINAL)
    /// How much of the fuse is left, to half a point of it.
    Q_PROPERTY(double fraction READ fraction NOTIFY fractionChanged FINAL)
    Q_PROPERTY(double timeOpacity READ timeOpacity NOTIFY timeOpacityChanged FINAL)
    Q_PROPERTY(bool isPaused READ isPaused NOTIFY isPausedChanged FINAL)
    Q_PROPERTY(bool isUrgent READ isUrgent NOTIFY isUrgentChanged FINAL)

  public:
    using QObject::QObject;

    void classBegin() override {}
    void componentComplete() override;

    void setDate(double date);
    void setFuseWidth(double width);

    [[nodiscard]] double remaining() const { return m_remaining; }
    [[nodiscard]] double fraction() const { return m_fraction; }
    [[nodiscard]] double timeOpacity() const { return m_timeOpacity; }
    [[nodiscard]] bool isPaused() const { return m_isPaused; }
    [[nodiscard]] bool isUrgent() const { return m_isUrgent; }

    Q_INVOKABLE void togglePause();

  signals:
    void remainingChanged();
    void fractionChanged();
    void timeOpacityChanged();
    void isPausedChanged();
    void isUrgentChanged();

  private:
    void readTimer();
    void show(const Countdown& countdown, Timestamp date);

    TimerModel* m_timer = nullptr;
    double m_date = 0;
    double m_fuseWidth = 0;
    bool m_isComplete = false;
    double m_remaining = 0;
    double m_fraction = 0;
    double m_timeOpacity = 1;
    bool m_isPaused = false;
    bool m_isUrgent = false;
};

} // namespace veslora
