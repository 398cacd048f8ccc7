// SPDX-License-Identifier: MIT
// The adapter's process, as the model needs it or not.
#include "VesloraUI/Music/AdapterSupervisor.h"
#include "tests/VesloraUI/Music/MusicScene.h"

#include <gmock/gmock.h>

#include <cmath>

namespace veslora {
namespace {

using testing::ElementsAre;
using testing::Optional;

class AdapterSupervisorTest : public MusicScene {
  protected:
    /// Ends the adapter after that many seconds, and gives the wait before its next start.
    double waitAfterRunOf(double seconds) {
        platform.advance(seconds);
        adapter.exit(1);
        const double wait = platform.time.nextDelay().value_or(-1);
        const int starts = adapter.starts;
        platform.advance(wait - 0.01);
        EXPECT_EQ(adapter.starts, starts) << "not before the wait is over";
        platform.advance(0.01);
        EXPECT_EQ(adapter.starts, starts + 1);
        return std::round(wait * 1000) / 1000; // the clock is a sum, exact to no more
    }
};

TEST_F(AdapterSupervisorTest, RunsOnlyWhileItIsNeeded) {
    model.setNeeded(false);
    EXPECT_EQ(adapter.stops, 0) << "nothing has changed";
    model.setNeeded(true);
    model.setNeeded(true);
    EXPECT_EQ(adapter.starts, 1);
    EXPECT_TRUE(adapter.isRunning());
    EXPECT_EQ(changes, 0);
    model.setNeeded(false);
    EXPECT_EQ(adapter.stops, 1);
    EXPECT_FALSE(adapter.isRunning());
    EXPECT_EQ(platform.time.pending(), 0u);
}

TEST_F(AdapterSupervisorTest, ItsLinesReachTheModel) {
    model.setNeeded(true);
    adapter.print(R"({"type":"data","payload":{"title":"A"}})");
    EXPECT_EQ(shown(), "A");
}

TEST_F(AdapterSupervisorTest, WithoutNeedItsPlayerIsNotShownButSpotifyIs) {
    model.setNeeded(true);
    other("A");
    model.setNeeded(false);
    EXPECT_EQ(shown(), "nothing");
    EXPECT_EQ(changes, 2);
    spotify("B");
    model.setNeeded(true);
    other("C", "");
    model.setNeeded(false);
    EXPECT_EQ(shown(), "B");
}

TEST_F(AdapterSupervisorTest, WhatItToldBeforeIsStillMergedWith) {
    model.setNeeded(true);
    other("A");
    model.setNeeded(false);
    model.setNeeded(true);
    otherDiff(R"({"artist":"B"})");
    EXPECT_EQ(shown(), "A");
}

TEST_F(AdapterSupervisorTest, WaitsLongerAfterEachFailure) {
    model.setNeeded(true);
    std::vector<double> waits;
    for (int failure = 0; failure < 8; ++failure) {
        waits.push_back(waitAfterRunOf(0));
    }
    EXPECT_THAT(waits, ElementsAre(1, 2, 4, 8, 16, 30, 30, 30));
}

TEST_F(AdapterSupervisorTest, ALongRunIsForgivenEverything) {
    model.setNeeded(true);
    EXPECT_EQ(waitAfterRunOf(0), 1);
    EXPECT_EQ(waitAfterRunOf(29.9), 2);
    EXPECT_EQ(waitAfterRunOf(30), 1);
    EXPECT_EQ(waitAfterRunOf(0), 2);
}

TEST_F(AdapterSupervisorTest, AClockThatIsSetMakesNoRunLong) {
    model.setNeeded(true);
    EXPECT_EQ(waitAfterRunOf(0), 1);
    platform.time.setClock(platform.time.now() + 3600);
    EXPECT_EQ(waitAfterRunOf(0), 2);
}

TEST_F(AdapterSupervisorTest, AFailureToStartIsTriedAgain) {
    adapter.canStart = false;
    model.setNeeded(true);
    EXPECT_EQ(adapter.starts, 1);
    platform.advance(1);
    EXPECT_EQ(adapter.starts, 2);
    EXPECT_THAT(platform.time.nextDelay(), Optional(2));
    adapter.canStart = true;
    platform.advance(2);
    EXPECT_TRUE(adapter.isRunning());
    EXPECT_EQ(platform.time.pending(), 0u);
}

TEST_F(AdapterSupervisorTest, NeedsThatEndDuringTheWaitEndIt) {
    model.setNeeded(true);
    adapter.exit(1);
    EXPECT_EQ(platform.time.pending(), 1u);
    model.setNeeded(false);
    EXPECT_EQ(platform.time.pending(), 0u);
    platform.advance(60);
    EXPECT_EQ(adapter.starts, 1);
}

TEST_F(AdapterSupervisorTest, NewNeedsForgetOldFailures) {
    model.setNeeded(true);
    EXPECT_EQ(waitAfterRunOf(0), 1);
    EXPECT_EQ(waitAfterRunOf(0), 2);
    model.setNeeded(false);
    model.setNeeded(true);
    EXPECT_EQ(waitAfterRunOf(0), 1);
}

TEST_F(AdapterSupervisorTest, ItsLastReportStaysWhenItEndsByItself) {
    model.setNeeded(true);
    other("A");
    adapter.exit(1);
    EXPECT_EQ(shown(), "A");
}

} // namespace
} // namespace veslora
