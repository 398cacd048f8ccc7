// SPDX-License-Identifier: MIT
#include "VesloraCore/Island/LiveActivity.h"

namespace veslora {

std::string_view rawValue(LiveActivityPriority priority) {
    return priority == LiveActivityPriority::timer ? "timer" : "music";
}

LiveActivityPriority liveActivityPriorityFrom(std::optional<std::string_view> storedValue) {
    return storedValue == rawValue(LiveActivityPriority::timer) ? LiveActivityPriority::timer
                                                                : LiveActivityPriority::music;
}

std::string_view name(LiveActivityKind kind) {
    switch (kind) {
    case LiveActivityKind::timerAlert:
        return "timerAlert";
    case LiveActivityKind::claudeAlert:
        return "claudeAlert";
    case LiveActivityKind::claudeFinished:
        return "claudeFinished";
    case LiveActivityKind::metronome:
        return "metronome";
    case LiveActivityKind::timer:
        return "timer";
    case LiveActivityKind::music:
        return "music";
    case LiveActivityKind::claudeWorking:
        return "claudeWorking";
    case LiveActivityKind::keepAwake:
        return "keepAwake";
    case LiveActivityKind::none:
        break;
    }
    return "none";
}

bool isAlert(LiveActivityKind kind) {
    return kind == LiveActivityKind::timerAlert || kind == LiveActivityKind::claudeAlert;
}

LiveActivityKind LiveActivityPicker::pick(const Candidates& candidates, LiveActivityPriority priority) {
    if (candidates.isShowingDone) {
        return LiveActivityKind::timerAlert;
    }
    if (candidates.claudeAlert) {
        return LiveActivityKind::claudeAlert;
    }
    if (candidates.claudeFinished) {
        return LiveActivityKind::claudeFinished;
    }
    if (candidates.metronomeActive) {
        return LiveActivityKind::metronome;
    }
    if (candidates.timerActive && (priority == LiveActivityPriority::timer || !candidates.musicActive)) {
        return LiveActivityKind::timer;
    }
    if (candidates.musicActive) {
        return LiveActivityKind::music;
    }
    if (candidates.claudeWorking) {
        return LiveActivityKind::claudeWorking;
    }
    return candidates.keepAwake ? LiveActivityKind::keepAwake : LiveActivityKind::none;
}

bool MusicLiveActivity::isActive(const std::optional<NowPlaying>& track, std::optional<Timestamp> pausedSince,
                                 Timestamp now) {
    if (!track) {
        return false;
    }
    return track->isPlaying || (pausedSince && now - *pausedSince < pausedGrace);
}

} // namespace veslora
