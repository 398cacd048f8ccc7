// SPDX-License-Identifier: MIT
// One animated number of the island: it follows its target as a damped spring and keeps its velocity when the
// target moves in flight.
#pragma once

#include "VesloraUI/Style/VesloraStyle.h"

#include <QAbstractAnimation>
#include <QObject>
#include <QQmlEngine>

namespace veslora {

class ViewEnvironment;

/// The motion alone, free of any clock: displacement and velocity of a damped harmonic oscillator, advanced
/// by its closed solution, so that the result does not depend on how a span of time is cut into steps.
struct SpringMotion {
    double value = 0;
    double velocity = 0; ///< per second
    double target = 0;

    /// Moves on by `seconds`. `response` is the period of the undamped spring, `damping` the share of
    /// critical damping, below 1.
    void advance(double seconds, double response, double damping);

    /// Moves on by `seconds` at the pace of one per `fadeDuration`, and no further than the target.
    void fade(double seconds);
    static constexpr double fadeDuration = 0.1; ///< seconds

    /// Whether what is left could not be seen: less than a hundredth of a point, or of whatever is counted,
    /// and too slow to go beyond the target by more.
    [[nodiscard]] bool isAtRest() const;
};

class Spring : public QObject, public QQmlParserStatus {
    Q_OBJECT
    QML_ELEMENT
    Q_INTERFACES(QQmlParserStatus)
    Q_PROPERTY(double target READ target WRITE setTarget NOTIFY targetChanged FINAL)
    /// Seconds, and the share of critical damping: the island's own where a view names none.
    Q_PROPERTY(double response MEMBER m_response FINAL)
    Q_PROPERTY(double damping MEMBER m_damping FINAL)
    /// Seconds that lie between two steps at least; 0 where every frame of the scene is one.
    Q_PROPERTY(double interval MEMBER m_interval FINAL)
    /// Nothing moves while this is false: each target is taken at once.
    Q_PROPERTY(bool isLive MEMBER m_isLive NOTIFY isLiveChanged FINAL)
    /// Whether it tells how much of something is there, from 0 to 1, rather than where or how large it is.
    /// Where the desktop wants less motion such a spring fades evenly, and any other is at its target at
    /// once.
    Q_PROPERTY(bool isFade MEMBER m_isFade FINAL)
    Q_PROPERTY(double value READ value NOTIFY valueChanged FINAL)
    Q_PROPERTY(bool isRunning READ isRunning NOTIFY isRunningChanged FINAL)

  public:
    explicit Spring(QObject* parent = nullptr);

    [[nodiscard]] double target() const { return m_motion.target; }
    /// Starts towards the target from where it is. The first target that a view gives is taken at once.
    void setTarget(double target);
    [[nodiscard]] double value() const { return m_motion.value; }
    [[nodiscard]] bool isRunning() const { return m_drive.state() == QAbstractAnimation::Running; }

    void classBegin() override {}
    void componentComplete() override;

  signals:
    void targetChanged();
    void isLiveChanged();
    void valueChanged();
    void isRunningChanged();

  private:
    /// Ticks with the frames of the scene for as long as the spring moves.
    class Drive : public QAbstractAnimation {
      public:
        explicit Drive(Spring& spring) : m_spring(spring) {}
        [[nodiscard]] int duration() const override { return -1; }

      protected:
        void updateCurrentTime(int milliseconds) override;
        void updateState(State newState, State oldState) override;

      private:
        Spring& m_spring;
        int m_last = 0;
    };

    [[nodiscard]] bool isStill() const;
    void advance(double seconds);

    const ViewEnvironment* m_environment = nullptr; ///< null for one that no engine made
    SpringMotion m_motion;
    double m_response = VesloraStyle::motionResponse;
    double m_damping = VesloraStyle::motionDamping;
    double m_interval = 0;
    bool m_isComplete = false;
    bool m_isLive = true;
    bool m_isFade = false;
    Drive m_drive{*this};
};

} // namespace veslora
