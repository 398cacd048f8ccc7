// SPDX-License-Identifier: MIT
#include "VesloraCore/Updates/UpdateSchedule.h"
#include "VesloraUI/Updates/AppcastUpdater.h"
#include "tests/VesloraUI/Updates/UpdateParts.h"

#include <QSignalSpy>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veslora {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Step = AppcastUpdater::Step;
using UpdateSchedule::period;
using UpdateSchedule::settling;

class AppcastUpdaterTest : public ::testing::Test {
  protected:
    /// The time until it looks by itself, from a start on.
    void startAndSettle() {
        parts.updates->start();
        platform.advance(settling);
    }
    /// To the middle of a download.
    void download() {
        parts.offer("0.2.0");
        parts.updates->install();
    }
    /// To the system's installer.
    void handOver() {
        download();
        parts.answer(PackageReady{});
        parts.answer(PackageReady{});
    }

    FakePlatform platform;
    FakeDefaults settings{platform};
    UpdateParts parts{platform, settings};
};

TEST_F(AppcastUpdaterTest, LooksByItselfOnceADay) {
    parts.updates->start();
    platform.advance(settling - 1);
    EXPECT_EQ(parts.asked(), 0U) << "the network may come later";
    platform.advance(1);
    ASSERT_EQ(parts.asked(), 1U);
    parts.answer(NothingNewer{});
    platform.advance(period - 1);
    EXPECT_EQ(parts.asked(), 1U);
    platform.advance(1);
    EXPECT_EQ(parts.asked(), 2U);
    EXPECT_THAT(parts.shown, IsEmpty());
}

TEST_F(AppcastUpdaterTest, AsksForWhatFitsThisBuild) {
    parts.updates->checkForUpdates();
    EXPECT_EQ(parts.question(), UpdateQuestion(FeedQuestion{.feed = "https://example.org/feed.xml",
                                                            .key = "key",
                                                            .version = "0.1.0",
                                                            .kind = std::string(Appcast::debianPackage),
                                                            .architecture = "amd64"}));
}

TEST_F(AppcastUpdaterTest, ANewStartWaitsForTheRestOfTheDay) {
    startAndSettle();
    parts.answer(NothingNewer{});
    platform.advance(1000);
    parts.restart();
    startAndSettle();
    EXPECT_EQ(parts.asked(), 1U);
    platform.advance(period - 1000 - settling - 1);
    EXPECT_EQ(parts.asked(), 1U);
    platform.advance(1);
    EXPECT_EQ(parts.asked(), 2U);
}

TEST_F(AppcastUpdaterTest, AStepOfTheClockNeitherHurriesNorDelays) {
    startAndSettle();
    parts.answer(NothingNewer{});
    const Timestamp before = platform.time.now();
    platform.time.setClock(before + 10 * period);
    platform.advance(period / 2);
    EXPECT_EQ(parts.asked(), 1U) << "never more than once a day";
    platform.time.setClock(before - 10 * period);
    platform.advance(period / 2);
    EXPECT_EQ(parts.asked(), 2U) << "nor less";
    parts.answer(NothingNewer{});
    // The record is in the future of a clock that is set back while the program is gone.
    platform.time.setClock(before - 20 * period);
    parts.restart();
    startAndSettle();
    platform.advance(period - 1);
    EXPECT_EQ(parts.asked(), 2U);
    platform.advance(1);
    EXPECT_EQ(parts.asked(), 3U);
}

TEST_F(AppcastUpdaterTest, ARecordFromTheFutureDoesNotSilenceShortSessions) {
    settings.set(SettingsKeys::updateCheckedAt, platform.time.now() + 1000 * period);
    startAndSettle();
    EXPECT_EQ(parts.asked(), 0U);
    platform.time.setClock(platform.time.now() + period);
    parts.restart();
    startAndSettle();
    EXPECT_EQ(parts.asked(), 1U) << "of yesterday's session the wall clock tells";
}

TEST_F(AppcastUpdaterTest, ALookThatReachesNobodyIsMadeAgainSoon) {
    startAndSettle();
    parts.answer(UpdateFailure::unreachable);
    EXPECT_EQ(settings.doubleValue(SettingsKeys::updateCheckedAt), 0);
    platform.advance(UpdateSchedule::retry - 1);
    EXPECT_EQ(parts.asked(), 1U);
    platform.advance(1);
    ASSERT_EQ(parts.asked(), 2U);
    parts.answer(UpdateFailure::missing);
    platform.advance(UpdateSchedule::retry * 2);
    EXPECT_EQ(parts.asked(), 2U) << "a server that was reached is left alone for a day";
    EXPECT_THAT(parts.shown, IsEmpty());
}

TEST_F(AppcastUpdaterTest, ObeysItsSwitchAtOnce) {
    std::vector<bool> told;
    parts.updates->onAutomaticallyChecksForUpdatesChange = [&](bool isOn) { told.push_back(isOn); };
    parts.updates->setAutomaticallyChecksForUpdates(false);
    EXPECT_FALSE(settings.boolValue(SettingsKeys::checkForUpdates));
    startAndSettle();
    platform.advance(3 * period);
    EXPECT_EQ(parts.asked(), 0U);
    settings.set(SettingsKeys::checkForUpdates, true);
    EXPECT_TRUE(parts.updates->automaticallyChecksForUpdates());
    platform.advance(0);
    EXPECT_EQ(parts.asked(), 1U) << "it was due long ago";
    settings.set(SettingsKeys::hideInFullscreen, false);
    EXPECT_THAT(told, ElementsAre(false, true));
}

TEST_F(AppcastUpdaterTest, AtRestNothingButTheNextLookIsWaitedFor) {
    const std::size_t before = platform.time.pending();
    startAndSettle();
    parts.answer(NothingNewer{});
    EXPECT_EQ(platform.time.pending(), before + 1);
}

TEST_F(AppcastUpdaterTest, AnOfferComesWithoutTheFocus) {
    startAndSettle();
    parts.answer(UpdateParts::item("0.2.0"));
    EXPECT_EQ(parts.step(), Step::offered);
    EXPECT_EQ(parts.updates->state().item, UpdateParts::item("0.2.0"));
    EXPECT_THAT(parts.shown, ElementsAre(false));
}

TEST_F(AppcastUpdaterTest, AnOfferIsNotMadeTwiceADay) {
    startAndSettle();
    parts.answer(UpdateParts::item("0.2.0"));
    parts.updates->dismiss();
    // As where the file of settings was put back.
    settings.set(SettingsKeys::updateCheckedAt, 0.0);
    parts.restart();
    startAndSettle();
    ASSERT_EQ(parts.asked(), 2U);
    parts.answer(UpdateParts::item("0.2.0"));
    EXPECT_EQ(parts.step(), Step::none);
    platform.advance(period);
    parts.answer(UpdateParts::item("0.2.0"));
    EXPECT_EQ(parts.step(), Step::offered) << "the next day it is";
    EXPECT_EQ(parts.shown.size(), 2U);
}

TEST_F(AppcastUpdaterTest, ANewerOneIsOfferedOnTheSameDay) {
    startAndSettle();
    parts.answer(UpdateParts::item("0.2.0"));
    parts.updates->dismiss();
    settings.set(SettingsKeys::updateCheckedAt, 0.0);
    parts.restart();
    startAndSettle();
    parts.answer(UpdateParts::item("0.2.1"));
    EXPECT_EQ(parts.step(), Step::offered);
}

TEST_F(AppcastUpdaterTest, ASkippedVersionIsOfferedOnlyToWhoAsks) {
    startAndSettle();
    parts.answer(UpdateParts::item("0.2.0"));
    parts.updates->skip();
    EXPECT_EQ(parts.step(), Step::none);
    platform.advance(period);
    parts.answer(UpdateParts::item("0.2.0"));
    EXPECT_EQ(parts.step(), Step::none);
    parts.updates->checkForUpdates();
    parts.answer(UpdateParts::item("0.2.0"));
    EXPECT_EQ(parts.step(), Step::offered);
    parts.updates->dismiss();
    platform.advance(period);
    parts.answer(UpdateParts::item("0.2.1"));
    EXPECT_EQ(parts.step(), Step::offered) << "another one";
}

TEST_F(AppcastUpdaterTest, WhoAsksSeesWhateverComesOfIt) {
    parts.updates->checkForUpdates();
    EXPECT_EQ(parts.step(), Step::checking);
    EXPECT_THAT(parts.shown, ElementsAre(true)) << "at once";
    parts.answer(NothingNewer{});
    EXPECT_EQ(parts.step(), Step::nothingNewer);
    for (int place = 0; place <= static_cast<int>(UpdateFailure::helper); ++place) {
        const auto failure = static_cast<UpdateFailure>(place);
        parts.updates->checkForUpdates();
        parts.answer(failure);
        EXPECT_EQ(parts.step(), Step::failed);
        EXPECT_EQ(parts.updates->state().failure, failure);
    }
}

TEST_F(AppcastUpdaterTest, AHelperThatBreaksOffOrTalksNonsenseIsAFailure) {
    for (const auto& result : std::vector<ProgramRunning::Result>{
             {false, ""},
             {true, ""},
             {true, "nonsense"},
             {true, "{\"result\":\"ready\"}"},
             {false, UpdateMessages::print(UpdateAnswer(UpdateParts::item("0.2.0")))}}) {
        parts.updates->checkForUpdates();
        parts.endHelper(result);
        EXPECT_EQ(parts.step(), Step::failed) << result.output;
        EXPECT_EQ(parts.updates->state().failure, UpdateFailure::helper) << result.output;
    }
}

TEST_F(AppcastUpdaterTest, NeverOffersWhatIsNotNewerWhateverTheHelperSays) {
    for (const char* version : {"0.1.0", "0.1", "0.0.9", "0.1.0~rc1"}) {
        parts.offer(version);
        EXPECT_EQ(parts.step(), Step::nothingNewer) << version;
    }
}

TEST_F(AppcastUpdaterTest, ACheckUnderWayIsNotBegunAgain) {
    std::vector<bool> told;
    parts.updates->onCanCheckForUpdatesChange = [&](bool canCheck) { told.push_back(canCheck); };
    startAndSettle();
    EXPECT_FALSE(parts.updates->canCheckForUpdates());
    parts.updates->checkForUpdates();
    EXPECT_EQ(parts.asked(), 1U);
    EXPECT_THAT(parts.shown, ElementsAre(true));
    parts.answer(NothingNewer{});
    EXPECT_EQ(parts.step(), Step::nothingNewer) << "it has been asked for meanwhile";
    EXPECT_THAT(told, ElementsAre(false, true));
}

TEST_F(AppcastUpdaterTest, WhatTheUserLooksAtStays) {
    startAndSettle();
    parts.answer(UpdateParts::item("0.2.0"));
    platform.advance(period);
    EXPECT_EQ(parts.asked(), 1U);
    EXPECT_EQ(parts.step(), Step::offered);
    parts.updates->dismiss();
    platform.advance(period);
    EXPECT_EQ(parts.asked(), 2U);
}

TEST_F(AppcastUpdaterTest, BringsChecksAndHandsOver) {
    download();
    EXPECT_EQ(parts.step(), Step::downloading);
    const auto folder = platform.disk.stat(UpdateParts::folder, Links::refuse);
    ASSERT_TRUE(folder);
    EXPECT_EQ(folder->mode, 0700U);
    const auto asked = std::get<PackageQuestion>(parts.question());
    EXPECT_EQ(asked.job, PackageQuestion::Job::download);
    EXPECT_EQ(asked.folder, UpdateParts::folder);
    EXPECT_EQ(asked.item.url, "https://example.org/veslora.deb");
    parts.answer(PackageReady{});
    EXPECT_EQ(parts.step(), Step::installing);
    EXPECT_EQ(std::get<PackageQuestion>(parts.question()).job, PackageQuestion::Job::verify);
    EXPECT_THAT(platform.installer.paths, IsEmpty()) << "not before it was checked again";
    parts.answer(PackageReady{});
    EXPECT_THAT(platform.installer.paths, ElementsAre(UpdateParts::package));
    platform.installer.end(InstallOutcome::installed);
    EXPECT_EQ(parts.step(), Step::installed);
}

TEST_F(AppcastUpdaterTest, ALooseFolderIsClosedToOthers) {
    ASSERT_FALSE(platform.disk.makeDirectory(UpdateParts::folder, 0755));
    download();
    EXPECT_EQ(platform.disk.stat(UpdateParts::folder, Links::refuse)->mode, 0700U);
}

TEST_F(AppcastUpdaterTest, ShowsHowMuchHasCome) {
    download();
    platform.advance(0.25);
    EXPECT_EQ(parts.updates->state().progress, 0);
    for (const auto& [size, progress] : {std::pair(250, 0.25), std::pair(1000, 1.0), std::pair(5000, 1.0)}) {
        ASSERT_FALSE(platform.disk.write(std::string(UpdateParts::package) + ".part",
                                         std::string(static_cast<std::size_t>(size), 'x'), {}));
        platform.advance(0.25);
        EXPECT_EQ(parts.updates->state().progress, progress);
    }
}

TEST_F(AppcastUpdaterTest, ADownloadThatIsCancelledLeavesNothing) {
    download();
    ASSERT_FALSE(platform.disk.write(std::string(UpdateParts::package) + ".part", "x", {}));
    parts.updates->cancel();
    EXPECT_EQ(parts.step(), Step::offered);
    EXPECT_FALSE(platform.programs.isAwaited(parts.asked() - 1)) << "the helper was ended";
    EXPECT_FALSE(platform.disk.stat(std::string(UpdateParts::package) + ".part", Links::refuse));
    parts.updates->install();
    EXPECT_EQ(parts.step(), Step::downloading) << "and may be begun again";
}

TEST_F(AppcastUpdaterTest, WhateverFailsOnTheWayInstallsNothing) {
    for (int place = 0; place <= static_cast<int>(UpdateFailure::helper); ++place) {
        const auto failure = static_cast<UpdateFailure>(place);
        download();
        parts.answer(failure);
        EXPECT_EQ(parts.step(), Step::failed);
        EXPECT_EQ(parts.updates->state().failure, failure);
        download();
        parts.answer(PackageReady{});
        parts.answer(failure);
        EXPECT_EQ(parts.step(), Step::failed);
    }
    download();
    parts.answer(NothingNewer{});
    EXPECT_EQ(parts.updates->state().failure, UpdateFailure::helper) << "no answer to that question";
    EXPECT_THAT(platform.installer.paths, IsEmpty());
}

TEST_F(AppcastUpdaterTest, AFolderThatCannotBeUsedIsSaid) {
    ASSERT_FALSE(platform.disk.makeDirectory("/home/me/.cache/Veslora", 0700));
    ASSERT_FALSE(platform.disk.write(UpdateParts::folder, "a file in its place", {}));
    download();
    EXPECT_EQ(parts.step(), Step::failed);
    EXPECT_EQ(parts.updates->state().failure, UpdateFailure::folder);
    EXPECT_EQ(parts.asked(), 1U);
}

TEST_F(AppcastUpdaterTest, WhatTheInstallerMakesOfItIsSaid) {
    for (const auto outcome :
         {InstallOutcome::forbidden, InstallOutcome::busy, InstallOutcome::failed, InstallOutcome::absent}) {
        handOver();
        EXPECT_FALSE(parts.updates->canCheckForUpdates());
        platform.installer.end(outcome);
        EXPECT_EQ(parts.step(), Step::byHand);
        EXPECT_EQ(parts.updates->state().outcome, outcome);
        EXPECT_EQ(parts.updates->packagePath(), UpdateParts::package);
        parts.updates->dismiss();
    }
    handOver();
    platform.installer.end(InstallOutcome::cancelled);
    EXPECT_EQ(parts.step(), Step::offered);
}

TEST_F(AppcastUpdaterTest, APackageThatIsInstalledIsNotKept) {
    handOver();
    ASSERT_FALSE(platform.disk.write(UpdateParts::package, "package", {}));
    platform.installer.end(InstallOutcome::installed);
    EXPECT_FALSE(platform.disk.stat(UpdateParts::package, Links::refuse));
}

TEST_F(AppcastUpdaterTest, WhatTheSystemInstallsGoesOnUnseenAndIsToldOf) {
    handOver();
    parts.updates->dismiss();
    EXPECT_EQ(parts.step(), Step::installing);
    parts.shown.clear();
    platform.installer.end(InstallOutcome::installed);
    EXPECT_EQ(parts.step(), Step::installed);
    EXPECT_THAT(parts.shown, ElementsAre(false));
}

TEST_F(AppcastUpdaterTest, WhatIsInstalledUnseenIsBroughtBackByWhoAsks) {
    std::vector<bool> told;
    handOver();
    parts.updates->onCanCheckForUpdatesChange = [&](bool canCheck) { told.push_back(canCheck); };
    EXPECT_FALSE(parts.updates->canCheckForUpdates()) << "its window is there";
    parts.updates->dismiss();
    EXPECT_TRUE(parts.updates->canCheckForUpdates());
    const auto state = parts.updates->state();
    const std::size_t asked = parts.asked();
    parts.shown.clear();
    parts.updates->checkForUpdates();
    EXPECT_THAT(parts.shown, ElementsAre(true));
    EXPECT_EQ(parts.updates->state(), state);
    EXPECT_EQ(parts.asked(), asked) << "nothing is begun beside it";
    EXPECT_EQ(platform.installer.paths.size(), 1U);
    EXPECT_FALSE(parts.updates->canCheckForUpdates());
    parts.updates->dismiss();
    EXPECT_THAT(told, ElementsAre(true, false, true));
    platform.installer.end(InstallOutcome::installed);
    EXPECT_EQ(parts.step(), Step::installed);
    EXPECT_THAT(told, ElementsAre(true, false, true)) << "as before";
}

TEST_F(AppcastUpdaterTest, WhatWasDismissedOnceIsInSightTheNextTime) {
    handOver();
    parts.updates->dismiss();
    platform.installer.end(InstallOutcome::cancelled);
    parts.updates->install();
    parts.answer(PackageReady{});
    EXPECT_EQ(parts.step(), Step::installing);
    EXPECT_FALSE(parts.updates->canCheckForUpdates());
}

TEST_F(AppcastUpdaterTest, AnInstallationThatDoesNotEndIsOverdueAndGoesOn) {
    handOver();
    platform.advance(AppcastUpdater::overdueAfter - 1);
    EXPECT_FALSE(parts.updates->state().isOverdue);
    parts.shown.clear();
    platform.advance(1);
    EXPECT_TRUE(parts.updates->state().isOverdue);
    EXPECT_EQ(parts.step(), Step::installing);
    EXPECT_THAT(parts.shown, IsEmpty()) << "nobody is disturbed";
    platform.installer.end(InstallOutcome::cancelled);
    EXPECT_EQ(parts.step(), Step::offered);
    EXPECT_FALSE(parts.updates->state().isOverdue);
    parts.updates->install();
    parts.answer(PackageReady{});
    parts.answer(PackageReady{});
    platform.advance(AppcastUpdater::overdueAfter - 1);
    EXPECT_FALSE(parts.updates->state().isOverdue) << "each has its own time";
    platform.installer.end(InstallOutcome::installed);
    platform.advance(AppcastUpdater::overdueAfter);
    EXPECT_EQ(parts.step(), Step::installed);
    EXPECT_FALSE(parts.updates->state().isOverdue);
}

TEST_F(AppcastUpdaterTest, InstallsOnlyWhatIsOffered) {
    parts.updates->install();
    parts.updates->cancel();
    parts.updates->skip();
    EXPECT_EQ(parts.asked(), 0U);
    parts.updates->checkForUpdates();
    parts.updates->install();
    EXPECT_EQ(parts.asked(), 1U);
    parts.updates->dismiss();
    EXPECT_EQ(parts.step(), Step::none);
    EXPECT_FALSE(platform.programs.isAwaited(0));
}

} // namespace
} // namespace veslora
