// SPDX-License-Identifier: MIT
// Which one piece of live information a closed island shows.
#pragma once

#include "VesloraCore/Music/NowPlaying.h"
#include "VesloraCore/Timestamp.h"

#include <array>
#include <optional>
#include <string_view>

namespace veslora {

/// What there is to show. The order of the cases is not the order in which they win.
enum class LiveActivityKind {
    timerAlert,     ///< the countdown has finished and says so
    claudeAlert,    ///< an agent waits for the user's permission
    claudeFinished, ///< an agent has just finished
    metronome,
    timer,
    music, ///< something plays, or was paused moments ago
    claudeWorking,
    keepAwake,
    none,
};

/// Which of these two goes first where both are there.
enum class LiveActivityPriority { music, timer };

inline constexpr std::array allLiveActivityPriorities{LiveActivityPriority::music,
                                                      LiveActivityPriority::timer};

/// How the settings spell it.
[[nodiscard]] std::string_view rawValue(LiveActivityPriority priority);
/// The priority stored as "timer" or "music"; music first for an absent or any other text.
[[nodiscard]] LiveActivityPriority liveActivityPriorityFrom(std::optional<std::string_view> storedValue);

/// As other programs and logs are told of it: the word of the case.
[[nodiscard]] std::string_view name(LiveActivityKind kind);

/// Whether the activity drops down from the island instead of standing in its wings.
[[nodiscard]] bool isAlert(LiveActivityKind kind);

namespace LiveActivityPicker {

/// What there is, before the user's order of preference is applied.
struct Candidates {
    bool isShowingDone = false;
    bool claudeAlert = false;
    bool claudeFinished = false;
    bool claudeWorking = false;
    bool keepAwake = false;
    bool metronomeActive = false;
    bool timerActive = false;
    bool musicActive = false;
};

[[nodiscard]] LiveActivityKind pick(const Candidates& candidates, LiveActivityPriority priority);

} // namespace LiveActivityPicker

namespace MusicLiveActivity {

/// Seconds for which a paused track stays on show.
inline constexpr double pausedGrace = 10;

/// `pausedSince` absent means that nobody saw it pause; a track that does not play is then not shown.
[[nodiscard]] bool isActive(const std::optional<NowPlaying>& track, std::optional<Timestamp> pausedSince,
                            Timestamp now);

} // namespace MusicLiveActivity

} // namespace veslora
