// SPDX-License-Identifier: MIT
// The time of animations, moved by hand. Nothing moves on its own from `install` until this goes.
#pragma once

#include <QAnimationDriver>
#include <QCoreApplication>

namespace veslora::testing {

class AnimationTime final : public QAnimationDriver {
  public:
    [[nodiscard]] qint64 elapsed() const override { return m_milliseconds; }

    void advance(int milliseconds) {
        // What has just set out is taken in by two rounds of events, and counts from the time at the end of
        // them.
        for (int round = 0; round < 2; ++round) {
            QCoreApplication::processEvents();
            advanceAnimation();
        }
        m_milliseconds += milliseconds;
        advanceAnimation();
    }

  private:
    qint64 m_milliseconds = 0;
};

} // namespace veslora::testing
