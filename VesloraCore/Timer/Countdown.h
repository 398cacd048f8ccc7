// SPDX-License-Identifier: MIT
// One countdown, running or paused, as a value: it stores the moment of its end and not a count, so that a
// machine that slept needs no special care.
#pragma once

#include "VesloraCore/Timestamp.h"

#include <variant>

namespace veslora {

/// There is no finished phase: a countdown whose end has passed is finished.
struct Countdown {
    static constexpr double urgentThreshold =
        10; ///< seconds before the end from which on it counts as urgent

    struct Running {
        Timestamp endsAt = 0;
        bool operator==(const Running&) const = default;
    };
    struct Paused {
        double remaining = 0; ///< seconds left
        bool operator==(const Paused&) const = default;
    };
    using Phase = std::variant<Running, Paused>;

    double duration = 0; ///< seconds of the whole run, added time included
    Phase phase;

    /// A run of `seconds` that starts at `startingAt`.
    Countdown(double seconds, Timestamp startingAt);

    [[nodiscard]] bool isPaused() const;

    /// Seconds left, at least 0.
    [[nodiscard]] double remaining(Timestamp at) const;

    /// From 1 at the start to 0 at the end; 0 for a run without any length.
    [[nodiscard]] double fractionRemaining(Timestamp at) const;

    /// Also true for a paused countdown that has nothing left.
    [[nodiscard]] bool isFinished(Timestamp at) const;

    /// Running, not over yet, and within `urgentThreshold` of its end.
    [[nodiscard]] bool isUrgent(Timestamp at) const;

    /// Does nothing when it is paused already.
    void pause(Timestamp at);

    /// Does nothing when it runs already.
    void resume(Timestamp at);

    /// Adds time, paused or not. Where nothing is left it starts a fresh run of just that length instead.
    void extend(double seconds, Timestamp at);

    bool operator==(const Countdown&) const = default;
};

} // namespace veslora
