// SPDX-License-Identifier: MIT
// What keeps the machine awake: a session that the user started, or an agent that works. A plain value that
// takes the time as an argument.
#pragma once

#include "VesloraCore/Timestamp.h"

#include <array>
#include <optional>

namespace veslora {

/// What must be held at a moment.
struct KeepAwakeHold {
    enum class Reason { manual, claude };

    bool display = false; ///< the display stays on too
    Reason reason = Reason::manual;
    bool operator==(const KeepAwakeHold&) const = default;
};

struct KeepAwakeState {
    static constexpr double step = 900;      ///< seconds, the unit of `adjust`
    static constexpr double longest = 43200; ///< seconds of the longest timed session
    /// Seconds of the sessions on offer; the absent one has no end.
    static constexpr std::array<std::optional<double>, 4> presets{1800.0, 3600.0, 7200.0, std::nullopt};

    std::optional<Timestamp> endsAt; ///< end of a timed session
    bool isIndefinite = false;       ///< a session without an end; `endsAt` is absent then
    bool keepsDisplayOn = false;     ///< the user's wish for sessions of their own
    bool whileClaudeWorks = false;   ///< the user's wish for agents at work, of either kind
    bool claudeIsWorking = false;    ///< an agent works, of either kind

    /// Starts or replaces the user's session: `seconds` held to 1 up to `longest`, absent for one without an
    /// end.
    void start(std::optional<double> seconds, Timestamp now);

    /// Ends the user's session.
    void stop();

    /// Whether a session of the user's runs; false from its end on, even before anybody has cleared it.
    [[nodiscard]] bool isManualActive(Timestamp now) const;

    /// Whole seconds left of a timed session, at least 1; absent when none runs.
    [[nodiscard]] std::optional<double> remaining(Timestamp now) const;

    /// Lengthens or shortens a running timed session by `steps` of 15 minutes, counted from the nearest such
    /// step, and held to one step up to `longest`. Does nothing in every other case.
    void adjust(int steps, Timestamp now);

    /// The user's session comes first. An agent never keeps the display on. Absent when nothing is to be
    /// held.
    [[nodiscard]] std::optional<KeepAwakeHold> hold(Timestamp now) const;

    bool operator==(const KeepAwakeState&) const = default;
};

} // namespace veslora
