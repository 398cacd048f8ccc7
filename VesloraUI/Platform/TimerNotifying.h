// SPDX-License-Identifier: MIT
// The seam for the word that the desktop itself gives of a timer's end. Main thread only.
#pragma once

namespace veslora {

class TimerNotifying {
  public:
    virtual ~TimerNotifying() = default;

    /// Asks the user for permission to notify, where the desktop has such a question. Nothing waits for the
    /// answer.
    virtual void requestPermission() = 0;

    /// Tells of the end of a timer of that many seconds, in place of an earlier one's, and without a sound.
    /// Returns at once. A desktop that cannot do it does nothing.
    virtual void timerFinished(double duration) = 0;
};

} // namespace veslora
