// SPDX-License-Identifier: MIT
#include "VesloraUI/Platform/NoOpUpdater.h"
#include "VesloraUI/Settings/UpdaterModel.h"
#include "tests/VesloraUI/Fixtures/FakeUpdater.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace veslora {
namespace {

TEST(UpdaterModelTests, BeginsWithWhatTheUpdaterHolds) {
    FakeUpdater updater;
    updater.isAutomatic = true;
    updater.canCheck = false;
    const UpdaterModel model(updater);
    EXPECT_TRUE(model.automaticallyChecks());
    EXPECT_FALSE(model.canCheckForUpdates());
}

TEST(UpdaterModelTests, FollowsTheUpdater) {
    FakeUpdater updater;
    UpdaterModel model(updater);
    const QSignalSpy canCheck(&model, &UpdaterModel::canCheckForUpdatesChanged);
    updater.setCanCheck(false);
    EXPECT_FALSE(model.canCheckForUpdates());
    updater.setCanCheck(false);
    EXPECT_EQ(canCheck.count(), 1);
    updater.setAutomaticallyChecksForUpdates(true);
    EXPECT_TRUE(model.automaticallyChecks());
    EXPECT_EQ(updater.writes, 1) << "nothing was written back";
}

TEST(UpdaterModelTests, WritesOnlyAnotherValue) {
    FakeUpdater updater;
    UpdaterModel model(updater);
    model.setAutomaticallyChecks(false);
    EXPECT_EQ(updater.writes, 0);
    model.setAutomaticallyChecks(true);
    EXPECT_EQ(updater.writes, 1);
    EXPECT_TRUE(updater.isAutomatic);
}

TEST(UpdaterModelTests, HandsAChecksWishOn) {
    FakeUpdater updater;
    UpdaterModel model(updater);
    model.checkForUpdates();
    EXPECT_EQ(updater.checks, 1);
}

TEST(UpdaterModelTests, AnUpdaterMayOutliveIt) {
    FakeUpdater updater;
    { const UpdaterModel model(updater); }
    EXPECT_FALSE(updater.onCanCheckForUpdatesChange);
    EXPECT_FALSE(updater.onAutomaticallyChecksForUpdatesChange);
}

TEST(UpdaterModelTests, WithoutAnUpdaterItTakesAllAndDoesNothing) {
    NoOpUpdater updater;
    UpdaterModel model(updater);
    EXPECT_FALSE(model.isAvailable());
    EXPECT_FALSE(model.canCheckForUpdates());
    model.checkForUpdates();
    model.setAutomaticallyChecks(true);
    EXPECT_TRUE(model.automaticallyChecks());
    EXPECT_FALSE(model.canCheckForUpdates());
}

} // namespace
} // namespace veslora
