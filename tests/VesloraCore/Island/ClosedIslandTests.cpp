// SPDX-License-Identifier: MIT
#include "VesloraCore/Island/ClosedIsland.h"

#include <gtest/gtest.h>

using namespace veslora;

namespace {

constexpr Timestamp now = 1000;

/// Every byte of a text is 7.2 wide, as the wings' font is for plain letters.
double measure(const std::string& text) {
    return 7.2 * static_cast<double>(text.size());
}

ClosedIslandInputs nothing() {
    return {};
}

ClosedIslandInputs everything() {
    ClosedIslandInputs inputs;
    inputs.timer.countdown = Countdown(1500, now);
    inputs.track = NowPlaying{.title = "Slow Harbour", .isPlaying = true};
    inputs.metronomeIsRunning = true;
    inputs.agents = {.isWaitingForApproval = true, .hasFinished = true, .hasWorking = true};
    inputs.keepAwake = KeepAwakeState{.isIndefinite = true};
    return inputs;
}

constexpr ClosedIslandSettings allOff{.musicLiveActivity = false,
                                      .claudeApprovalAlerts = false,
                                      .claudeFinishedActivity = false,
                                      .claudeWorkingActivity = false,
                                      .keepAwakeLiveActivity = false};

LiveActivityKind kindOf(const ClosedIslandInputs& inputs, const ClosedIslandSettings& settings = {}) {
    return closedIslandActivity(inputs, settings, measure, now).kind;
}

std::optional<double> wingOf(const ClosedIslandInputs& inputs) {
    return closedIslandActivity(inputs, {}, measure, now).wingWidth;
}

} // namespace

TEST(ClosedIsland, NothingRunningShowsNothing) {
    const ClosedIslandActivity none;
    EXPECT_EQ(closedIslandActivity(nothing(), {}, measure, now), none);
    EXPECT_EQ(closedIslandActivity(nothing(), allOff, measure, now), none);
    EXPECT_EQ(none.kind, LiveActivityKind::none);
    EXPECT_EQ(none.wingWidth, std::nullopt);
}

TEST(ClosedIsland, FinishedTimerBeatsAnApprovalAndThatBeatsTheRest) {
    auto inputs = everything();
    EXPECT_EQ(kindOf(inputs), LiveActivityKind::claudeAlert);
    inputs.timer.isShowingDone = true;
    EXPECT_EQ(kindOf(inputs), LiveActivityKind::timerAlert);
}

TEST(ClosedIsland, PendingRequestAloneIsAnAlertToo) {
    auto inputs = nothing();
    inputs.agents.hasPendingRequests = true;
    EXPECT_EQ(kindOf(inputs), LiveActivityKind::claudeAlert);
    EXPECT_EQ(wingOf(inputs), std::nullopt);
}

TEST(ClosedIsland, WaitingSessionShowsNothingAtAllWithAlertsOff) {
    auto inputs = nothing();
    inputs.agents = {.isWaitingForApproval = true, .hasPendingRequests = true};
    EXPECT_EQ(kindOf(inputs, {.claudeApprovalAlerts = false}), LiveActivityKind::none);
}

TEST(ClosedIsland, EachSettingSwitchesItsOwnActivityOff) {
    auto finished = nothing();
    finished.agents.hasFinished = true;
    EXPECT_EQ(kindOf(finished), LiveActivityKind::claudeFinished);
    EXPECT_EQ(kindOf(finished, {.claudeFinishedActivity = false}), LiveActivityKind::none);

    auto working = nothing();
    working.agents.hasWorking = true;
    EXPECT_EQ(kindOf(working), LiveActivityKind::claudeWorking);
    EXPECT_EQ(kindOf(working, {.claudeWorkingActivity = false}), LiveActivityKind::none);

    auto music = nothing();
    music.track = NowPlaying{.title = "Slow Harbour", .isPlaying = true};
    EXPECT_EQ(kindOf(music), LiveActivityKind::music);
    EXPECT_EQ(kindOf(music, {.musicLiveActivity = false}), LiveActivityKind::none);

    auto awake = nothing();
    awake.keepAwake = KeepAwakeState{.isIndefinite = true};
    EXPECT_EQ(kindOf(awake), LiveActivityKind::keepAwake);
    EXPECT_EQ(kindOf(awake, {.keepAwakeLiveActivity = false}), LiveActivityKind::none);
}

TEST(ClosedIsland, TimerAndMetronomeNeedNoSetting) {
    auto timer = nothing();
    timer.timer.countdown = Countdown(60, now);
    EXPECT_EQ(kindOf(timer, allOff), LiveActivityKind::timer);
    timer.metronomeIsRunning = true;
    EXPECT_EQ(kindOf(timer, allOff), LiveActivityKind::metronome);
}

TEST(ClosedIsland, PausedTimerStaysOnShow) {
    auto inputs = nothing();
    inputs.timer.countdown = Countdown(60, now);
    inputs.timer.countdown->pause(now);
    EXPECT_EQ(kindOf(inputs), LiveActivityKind::timer);
}

TEST(ClosedIsland, PrioritySettlesTimerAgainstMusic) {
    auto inputs = nothing();
    inputs.timer.countdown = Countdown(60, now);
    inputs.track = NowPlaying{.title = "Slow Harbour", .isPlaying = true};
    EXPECT_EQ(kindOf(inputs), LiveActivityKind::music);
    EXPECT_EQ(kindOf(inputs, {.liveActivityPriority = LiveActivityPriority::timer}), LiveActivityKind::timer);
}

TEST(ClosedIsland, PausedMusicGoesAfterItsGrace) {
    auto inputs = nothing();
    inputs.track = NowPlaying{.title = "Slow Harbour"};
    EXPECT_EQ(kindOf(inputs), LiveActivityKind::none);
    inputs.musicPausedSince = now - 9.9;
    EXPECT_EQ(kindOf(inputs), LiveActivityKind::music);
    inputs.musicPausedSince = now - 10;
    EXPECT_EQ(kindOf(inputs), LiveActivityKind::none);
}

TEST(ClosedIsland, KeepAwakeShowsUntilItsEnd) {
    auto inputs = nothing();
    inputs.keepAwake = KeepAwakeState{.endsAt = now + 1};
    EXPECT_EQ(kindOf(inputs), LiveActivityKind::keepAwake);
    inputs.keepAwake->endsAt = now;
    EXPECT_EQ(kindOf(inputs), LiveActivityKind::none);
    inputs.keepAwake->endsAt.reset();
    EXPECT_EQ(kindOf(inputs), LiveActivityKind::none);
    inputs.keepAwake = KeepAwakeState{.whileClaudeWorks = true, .claudeIsWorking = true};
    EXPECT_EQ(kindOf(inputs), LiveActivityKind::none) << "An agent's own hold is not the user's session.";
}

TEST(ClosedIsland, WingsHoldWhatStandsInThem) {
    auto inputs = nothing();
    inputs.keepAwake = KeepAwakeState{.isIndefinite = true};
    EXPECT_EQ(wingOf(inputs), 36 + 1 + 16);
    inputs.agents.hasWorking = true;
    EXPECT_EQ(wingOf(inputs), 26 + 16) << "The mark is wider than the spinner.";
    inputs.timer.countdown = Countdown(1500, now);
    EXPECT_EQ(wingOf(inputs), 36 + 1 + 16);
    inputs.track = NowPlaying{.title = "Slow Harbour", .isPlaying = true};
    EXPECT_EQ(wingOf(inputs), 37);
    inputs.metronomeIsRunning = true;
    EXPECT_EQ(wingOf(inputs), 22 + 1 + 16);
    inputs.agents.hasFinished = true;
    EXPECT_EQ(wingOf(inputs), 29 + 1 + 16);
    inputs.agents.isWaitingForApproval = true;
    EXPECT_EQ(wingOf(inputs), std::nullopt);
    inputs.timer.isShowingDone = true;
    EXPECT_EQ(wingOf(inputs), std::nullopt);
}

TEST(ClosedIsland, NarrowFontLeavesEachWingItsLeastWidth) {
    const auto narrow = [](const std::string&) { return 0.5; };
    const auto wing = [&](const ClosedIslandInputs& inputs) {
        return closedIslandActivity(inputs, {}, narrow, now).wingWidth;
    };
    auto inputs = nothing();
    inputs.keepAwake = KeepAwakeState{.isIndefinite = true};
    EXPECT_EQ(wing(inputs), 14 + 16);
    inputs.timer.countdown = Countdown(1500, now);
    EXPECT_EQ(wing(inputs), 25 + 16);
    inputs.metronomeIsRunning = true;
    EXPECT_EQ(wing(inputs), 8 + 16);
    inputs.agents.hasFinished = true;
    EXPECT_EQ(wing(inputs), 26 + 16);
}

TEST(LiveActivityMetrics, TextWidthRoundsUpAndAddsOne) {
    EXPECT_EQ(LiveActivityMetrics::textWidth("", [](const std::string&) { return 0.0; }), 1);
    EXPECT_EQ(LiveActivityMetrics::textWidth("x", [](const std::string&) { return 7.0; }), 8);
    EXPECT_EQ(LiveActivityMetrics::textWidth("x", [](const std::string&) { return 7.01; }), 9);
}

TEST(LiveActivityMetrics, TimerWingMeasuresTheWholeLengthInZeros) {
    std::string measured;
    const auto remember = [&measured](const std::string& text) {
        measured = text;
        return 50.0;
    };
    EXPECT_EQ(LiveActivityMetrics::wingWidth(5400, remember), 51 + 16);
    EXPECT_EQ(measured, "0:00:00");
    EXPECT_EQ(LiveActivityMetrics::wingWidth(1511, remember), 51 + 16);
    EXPECT_EQ(measured, "00:00");
}

TEST(LiveActivityMetrics, TimerWingStaysAsItWasWhileTheTimeRunsDown) {
    auto inputs = nothing();
    inputs.timer.countdown = Countdown(5400, now);
    const auto atStart = closedIslandActivity(inputs, {}, measure, now).wingWidth;
    EXPECT_EQ(closedIslandActivity(inputs, {}, measure, now + 5390).wingWidth, atStart);
}
