// SPDX-License-Identifier: MIT
// The seam for time: the only clock, and the only way to wait. Main thread only.
#pragma once

#include "VesloraCore/Timestamp.h"
#include "VesloraUI/Platform/Task.h"

#include <functional>

namespace veslora {

/// How punctual a repetition must be.
enum class Precision {
    exact,  ///< at its own moment, as an animation needs
    coarse, ///< joined with all other coarse ones, so that an idle program wakes once for them all
};

class Scheduler {
  public:
    virtual ~Scheduler() = default;

    /// The wall clock.
    [[nodiscard]] virtual Timestamp now() const = 0;

    /// Seconds since some moment, which differs from run to run. Unlike the wall clock it can't be set, and
    /// it never goes back; time during which the machine slept counts. Whatever decides about an answer is
    /// timed by it.
    [[nodiscard]] virtual double steadyNow() const = 0;

    /// Calls `run` once, `seconds` from now. The wait counts time during which the machine slept. A wait of
    /// zero or less ends at the next turn of the event loop, never within this call.
    [[nodiscard]] virtual Task after(double seconds, std::function<void()> run) = 0;

    /// Calls `run` once when the wall clock reaches `date`, however it is set meanwhile; the end of a
    /// machine's sleep finds it reached too. A date that has passed is reached at the next turn of the event
    /// loop, never within this call.
    [[nodiscard]] virtual Task at(Timestamp date, std::function<void()> run) = 0;

    /// Calls `run` every `seconds`, first after one such period. Exact repetitions fall on multiples of the
    /// period since 1970, so that equal periods tick together. Missed ones are not made up for.
    [[nodiscard]] virtual Task every(double seconds, Precision precision, std::function<void()> run) = 0;

    /// Does `work` on another thread at low priority, then `then` on the main thread. Cancelling does not
    /// interrupt `work`; it only drops `then`. `work` must not touch anything that the main thread does.
    [[nodiscard]] virtual Task background(std::function<void()> work, std::function<void()> then) = 0;

    /// As `background`, for what somebody waits for: at usual priority, and never behind background work.
    /// Pieces of it are done one after the other.
    [[nodiscard]] virtual Task concurrently(std::function<void()> work, std::function<void()> then) = 0;
};

} // namespace veslora
