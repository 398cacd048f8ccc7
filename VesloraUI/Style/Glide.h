// SPDX-License-Identifier: MIT
// One length of a view that moves evenly to its target, in the same time whatever the way; at once where
// the desktop wants less motion.
#pragma once

#include <QObject>
#include <QQmlEngine>
#include <QVariantAnimation>

namespace veslora {

class ViewEnvironment;

class Glide : public QObject, public QQmlParserStatus {
    Q_OBJECT
    QML_ELEMENT
    Q_INTERFACES(QQmlParserStatus)
    /// Points.
    Q_PROPERTY(double target READ target WRITE setTarget NOTIFY targetChanged FINAL)
    /// Nothing moves while this is false: each target is taken at once.
    Q_PROPERTY(bool isLive MEMBER m_isLive NOTIFY isLiveChanged FINAL)
    Q_PROPERTY(double value READ value NOTIFY valueChanged FINAL)

  public:
    static constexpr int duration = 250; ///< milliseconds
    /// Points that a step from rest has at most to be taken at once: it would not be seen to move.
    static constexpr double leastWay = 1;

    explicit Glide(QObject* parent = nullptr);

    [[nodiscard]] double target() const { return m_target; }
    /// Sets out towards the target from where it is. The first target that a view gives is taken at once.
    void setTarget(double target);
    [[nodiscard]] double value() const { return m_value; }

    void classBegin() override {}
    void componentComplete() override;

  signals:
    void targetChanged();
    void isLiveChanged();
    void valueChanged();

  private:
    void setValue(double value);

    const ViewEnvironment* m_environment = nullptr; ///< null for one that no engine made
    double m_start = 0;                             ///< where the present way began
    double m_target = 0;
    double m_value = 0;
    bool m_isComplete = false;
    bool m_isLive = true;
    QVariantAnimation m_way; ///< from 0 to 1
};

} // namespace veslora
