// SPDX-License-Identifier: MIT
#include "VesloraCore/Island/LiveActivity.h"

#include <gtest/gtest.h>

#include <array>

using namespace veslora;
using LiveActivityPicker::Candidates;
using LiveActivityPicker::pick;

namespace {

/// The flags in the order in which they win, as long as nothing but the timer-or-music question is open.
constexpr std::array<bool Candidates::*, 8> flags{&Candidates::isShowingDone,  &Candidates::claudeAlert,
                                                  &Candidates::claudeFinished, &Candidates::metronomeActive,
                                                  &Candidates::musicActive,    &Candidates::timerActive,
                                                  &Candidates::claudeWorking,  &Candidates::keepAwake};

constexpr std::array<LiveActivityKind, 9> winners{
    LiveActivityKind::timerAlert,    LiveActivityKind::claudeAlert, LiveActivityKind::claudeFinished,
    LiveActivityKind::metronome,     LiveActivityKind::music,       LiveActivityKind::timer,
    LiveActivityKind::claudeWorking, LiveActivityKind::keepAwake,   LiveActivityKind::none};

NowPlaying track(bool isPlaying) {
    NowPlaying result;
    result.title = "Slow Harbour";
    result.isPlaying = isPlaying;
    return result;
}

} // namespace

TEST(LiveActivityPicker, EachKindWinsOverEverythingBelowIt) {
    for (std::size_t first = 0; first <= flags.size(); ++first) {
        Candidates candidates;
        for (std::size_t flag = first; flag < flags.size(); ++flag) {
            candidates.*flags[flag] = true;
        }
        EXPECT_EQ(pick(candidates, LiveActivityPriority::music), winners[first]) << first;
    }
}

TEST(LiveActivityPicker, EachKindWinsAlone) {
    for (const auto priority : {LiveActivityPriority::music, LiveActivityPriority::timer}) {
        for (std::size_t flag = 0; flag < flags.size(); ++flag) {
            Candidates candidates;
            candidates.*flags[flag] = true;
            EXPECT_EQ(pick(candidates, priority), winners[flag]) << flag;
        }
    }
}

TEST(LiveActivityPicker, PrioritySettlesTimerAgainstMusicOnly) {
    const Candidates both{.timerActive = true, .musicActive = true};
    EXPECT_EQ(pick(both, LiveActivityPriority::timer), LiveActivityKind::timer);
    EXPECT_EQ(pick(both, LiveActivityPriority::music), LiveActivityKind::music);
    const Candidates metronomeToo{.metronomeActive = true, .timerActive = true, .musicActive = true};
    EXPECT_EQ(pick(metronomeToo, LiveActivityPriority::timer), LiveActivityKind::metronome);
    const Candidates workingToo{.claudeWorking = true, .timerActive = true};
    EXPECT_EQ(pick(workingToo, LiveActivityPriority::music), LiveActivityKind::timer);
}

TEST(LiveActivityPriority, OnlyTheExactTextMeansTimer) {
    EXPECT_EQ(liveActivityPriorityFrom("timer"), LiveActivityPriority::timer);
    EXPECT_EQ(liveActivityPriorityFrom("music"), LiveActivityPriority::music);
    EXPECT_EQ(liveActivityPriorityFrom("Timer"), LiveActivityPriority::music);
    EXPECT_EQ(liveActivityPriorityFrom(""), LiveActivityPriority::music);
    EXPECT_EQ(liveActivityPriorityFrom(std::nullopt), LiveActivityPriority::music);
}

TEST(LiveActivityKind, OnlyTheTwoAlertsAreAlerts) {
    for (const auto kind : winners) {
        const bool expected = kind == LiveActivityKind::timerAlert || kind == LiveActivityKind::claudeAlert;
        EXPECT_EQ(isAlert(kind), expected);
    }
}

TEST(MusicLiveActivity, PlayingTrackIsActive) {
    EXPECT_TRUE(MusicLiveActivity::isActive(track(true), std::nullopt, 100));
    EXPECT_TRUE(MusicLiveActivity::isActive(track(true), 0, 100));
}

TEST(MusicLiveActivity, PausedTrackLingersForTenSeconds) {
    EXPECT_TRUE(MusicLiveActivity::isActive(track(false), 90.1, 100));
    EXPECT_FALSE(MusicLiveActivity::isActive(track(false), 90, 100));
}

TEST(MusicLiveActivity, NothingWithoutATrackOrAPause) {
    EXPECT_FALSE(MusicLiveActivity::isActive(std::nullopt, 99, 100));
    EXPECT_FALSE(MusicLiveActivity::isActive(track(false), std::nullopt, 100));
}
