// SPDX-License-Identifier: MIT
// From the state of all widgets and the user's settings to what the closed island shows and how wide its
// wings are.
#pragma once

#include "VesloraCore/Island/LiveActivity.h"
#include "VesloraCore/KeepAwake/KeepAwakeState.h"
#include "VesloraCore/Music/NowPlaying.h"
#include "VesloraCore/Text/Words.h"
#include "VesloraCore/Timer/Countdown.h"
#include "VesloraCore/Timestamp.h"

#include <functional>
#include <optional>
#include <string>

namespace veslora {

/// Gathered from whichever models there are; what a missing model would have told keeps its value here.
struct ClosedIslandInputs {
    struct Timer {
        bool isShowingDone = false;
        std::optional<Countdown> countdown; ///< running or paused
    };
    struct Agents {
        bool isWaitingForApproval = false; ///< a session waits for the user's permission
        bool hasPendingRequests = false;   ///< a request can be answered from the island
        bool hasFinished = false;          ///< a session has just finished
        bool hasWorking = false;
    };

    Timer timer;
    std::optional<NowPlaying> track;
    std::optional<Timestamp> musicPausedSince;
    bool metronomeIsRunning = false;
    Agents agents;
    std::optional<KeepAwakeState> keepAwake;
};

/// The settings that are read here, with their defaults.
struct ClosedIslandSettings {
    bool musicLiveActivity = true;
    LiveActivityPriority liveActivityPriority = LiveActivityPriority::music;
    bool claudeApprovalAlerts = true;
    bool claudeFinishedActivity = true;
    bool claudeWorkingActivity = true;
    bool keepAwakeLiveActivity = true;
    bool operator==(const ClosedIslandSettings&) const = default;
};

struct ClosedIslandActivity {
    LiveActivityKind kind = LiveActivityKind::none;
    std::optional<double> wingWidth; ///< points of one wing; absent where nothing is beside the notch
    bool operator==(const ClosedIslandActivity&) const = default;
};

/// The raw width in points of a text in the wings' font: monospaced, size 12, semibold.
using MeasureText = std::function<double(const std::string&)>;

namespace LiveActivityMetrics {

inline constexpr double outerPadding = 12; ///< at a wing's end
inline constexpr double innerPadding = 4;  ///< beside the notch

/// Whole points that a text takes, with one to spare.
[[nodiscard]] double textWidth(const std::string& text, const MeasureText& measure);

/// The wing of a timer of that many seconds. Measured with zeros for the whole length, so that it keeps still
/// while the digits change.
[[nodiscard]] double wingWidth(double duration, const MeasureText& measure);

} // namespace LiveActivityMetrics

[[nodiscard]] ClosedIslandActivity closedIslandActivity(const ClosedIslandInputs& inputs,
                                                        const ClosedIslandSettings& settings,
                                                        const MeasureText& measure, Timestamp now,
                                                        const Words& words = {});

} // namespace veslora
