// SPDX-License-Identifier: MIT
// The alert of a timer that has finished. Its fuse flickers when it appears.
#pragma once

#include "VesloraUI/Timer/TimerModel.h"

#include <QObject>
#include <QQmlEngine>

namespace veslora {

class TimerDoneAlertPresenter : public QObject, public QQmlParserStatus {
    Q_OBJECT
    QML_ELEMENT
    Q_INTERFACES(QQmlParserStatus)
    Q_PROPERTY(veslora::TimerModel* timer MEMBER m_timer REQUIRED FINAL)
    /// Seconds that the timer ran.
    Q_PROPERTY(double duration READ duration NOTIFY durationChanged FINAL)
    Q_PROPERTY(bool isFuseLit READ isFuseLit NOTIFY isFuseLitChanged FINAL)

  public:
    static constexpr int flickers = 3;
    static constexpr double flickerLength = 0.18; ///< seconds that each half of a flicker takes

    using QObject::QObject;

    void classBegin() override {}
    void componentComplete() override;

    [[nodiscard]] double duration() const { return m_duration; }
    [[nodiscard]] bool isFuseLit() const { return m_isFuseLit; }

  signals:
    void durationChanged();
    void isFuseLitChanged();

  private:
    /// Turns the light over, and again until as many turns are done.
    void flicker(int turns);

    TimerModel* m_timer = nullptr;
    double m_duration = 0;
    bool m_isFuseLit = true;
    Task m_flickerTask;
};

} // namespace veslora
