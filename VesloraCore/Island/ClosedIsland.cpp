// SPDX-License-Identifier: MIT
#include "VesloraCore/Island/ClosedIsland.h"

#include "VesloraCore/Timer/TimerFormat.h"

#include <algorithm>
#include <cmath>

namespace veslora {

namespace {

constexpr double markWidth = 26; ///< an agent's mark: 17 columns of 1.5 points, rounded up
constexpr double musicWingWidth = 37;
constexpr double timerFuseWidth = 25;
constexpr double metronomeLightWidth = 8;
constexpr double keepAwakeSymbolWidth = 14;

double padded(double content) {
    return content + LiveActivityMetrics::outerPadding + LiveActivityMetrics::innerPadding;
}

bool showsKeepAwake(const std::optional<KeepAwakeState>& state, Timestamp now) {
    return state && (state->isIndefinite || (state->endsAt && now < *state->endsAt));
}

LiveActivityPicker::Candidates candidatesOf(const ClosedIslandInputs& inputs,
                                            const ClosedIslandSettings& settings, Timestamp now) {
    const auto& agents = inputs.agents;
    const bool isAsking = agents.isWaitingForApproval || agents.hasPendingRequests;
    return {
        .isShowingDone = inputs.timer.isShowingDone,
        .claudeAlert = settings.claudeApprovalAlerts && isAsking,
        .claudeFinished = settings.claudeFinishedActivity && agents.hasFinished,
        .claudeWorking = settings.claudeWorkingActivity && agents.hasWorking,
        .keepAwake = settings.keepAwakeLiveActivity && showsKeepAwake(inputs.keepAwake, now),
        .metronomeActive = inputs.metronomeIsRunning,
        .timerActive = inputs.timer.countdown.has_value(),
        .musicActive = settings.musicLiveActivity &&
                       MusicLiveActivity::isActive(inputs.track, inputs.musicPausedSince, now),
    };
}

std::optional<double> wingWidthOf(LiveActivityKind kind, const std::optional<Countdown>& countdown,
                                  const MeasureText& measure, const Words& words) {
    const auto wide = [&](const std::string& text, double other) {
        return padded(std::max(LiveActivityMetrics::textWidth(text, measure), other));
    };
    switch (kind) {
    case LiveActivityKind::claudeFinished:
        // As the view beside the notch has it.
        return wide(words.translate("ClaudeLiveActivityView", "DONE"), markWidth);
    case LiveActivityKind::metronome:
        return wide("000", metronomeLightWidth);
    case LiveActivityKind::timer:
        if (!countdown) {
            return std::nullopt;
        }
        return LiveActivityMetrics::wingWidth(countdown->duration, measure);
    case LiveActivityKind::music:
        return musicWingWidth;
    case LiveActivityKind::claudeWorking:
        return wide("✽", markWidth);
    case LiveActivityKind::keepAwake:
        return wide("00:00", keepAwakeSymbolWidth);
    case LiveActivityKind::timerAlert:
    case LiveActivityKind::claudeAlert:
    case LiveActivityKind::none:
        break;
    }
    return std::nullopt;
}

} // namespace

double LiveActivityMetrics::textWidth(const std::string& text, const MeasureText& measure) {
    return std::ceil(measure(text)) + 1;
}

double LiveActivityMetrics::wingWidth(double duration, const MeasureText& measure) {
    std::string text = TimerFormat::remaining(duration);
    std::replace_if(
        text.begin(), text.end(), [](char letter) { return letter >= '0' && letter <= '9'; }, '0');
    return padded(std::max(textWidth(text, measure), timerFuseWidth));
}

ClosedIslandActivity closedIslandActivity(const ClosedIslandInputs& inputs,
                                          const ClosedIslandSettings& settings, const MeasureText& measure,
                                          Timestamp now, const Words& words) {
    const auto kind =
        LiveActivityPicker::pick(candidatesOf(inputs, settings, now), settings.liveActivityPriority);
    return {kind, wingWidthOf(kind, inputs.timer.countdown, measure, words)};
}

} // namespace veslora
