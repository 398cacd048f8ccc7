// SPDX-License-Identifier: MIT
// A package handed to a PackageKit that installs it, refuses, is busy, goes away or is not there.
#include "VesloraLinux/DBus/PackageKitInstaller.h"
#include "VesloraLinux/DBus/PackageKitTransaction.h"
#include "tests/VesloraLinux/DBus/MockPackageKit.h"
#include "tests/VesloraLinux/Support/PrivateBus.h"
#include "tests/VesloraLinux/Support/Waiting.h"
#include "tests/support/ManualScheduler.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

namespace veslora {
namespace {

using ::testing::ElementsAre;
using testing::handleEventsFor;
using ::testing::IsEmpty;
using testing::MockPackageKit;
using testing::waitUntil;

class PackageKitInstallerTest : public ::testing::Test {
  protected:
    void install() {
        task = installer.install("/home/anna/.cache/Veslora/updates/veslora_0.2_amd64.deb",
                                 [this](InstallOutcome outcome) { outcomes.push_back(outcome); });
        EXPECT_THAT(outcomes, IsEmpty()) << "never within the call";
    }
    /// Runs what is due and the bus until the condition holds.
    [[nodiscard]] bool waitFor(const std::function<bool()>& condition) {
        return waitUntil([&] {
            time.advance(0);
            time.runBackground();
            return condition();
        });
    }
    [[nodiscard]] bool isAsked() {
        return waitFor([this] { return !service.installed.isEmpty(); });
    }
    [[nodiscard]] bool endsWith(InstallOutcome outcome) {
        return waitFor([this] { return !outcomes.empty(); }) && outcomes == std::vector{outcome};
    }

    testing::CoreApplication application;
    testing::PrivateBus bus;
    ManualScheduler time;
    SystemBus systemBus{time, [this] { return connection; }};
    std::optional<QDBusConnection> connection{bus.connect()};
    MockPackageKit service{bus.connect()};
    PackageKitInstaller installer{time, systemBus};
    std::vector<InstallOutcome> outcomes;
    Task task;
};

TEST_F(PackageKitInstallerTest, HandsTheFileOverAndWaitsForItsEnd) {
    ASSERT_TRUE(service.come());
    install();
    ASSERT_TRUE(isAsked());
    EXPECT_EQ(service.installed, QStringList{"/home/anna/.cache/Veslora/updates/veslora_0.2_amd64.deb"});
    EXPECT_EQ(service.flags, 0U);
    EXPECT_TRUE(service.hints.contains("interactive=true"));
    service.finishAnother(1);
    handleEventsFor(50);
    EXPECT_THAT(outcomes, IsEmpty()) << "that was another's";
    service.finish(1);
    ASSERT_TRUE(endsWith(InstallOutcome::installed));
    service.finish(2);
    handleEventsFor(50);
    EXPECT_THAT(outcomes, ElementsAre(InstallOutcome::installed)) << "once";
}

TEST_F(PackageKitInstallerTest, AnEndBeforeTheAnswerIsHeard) {
    ASSERT_TRUE(service.come());
    service.endsAtOnce = true;
    install();
    EXPECT_TRUE(endsWith(InstallOutcome::installed));
}

TEST_F(PackageKitInstallerTest, AnErrorSaysWhyItEnded) {
    ASSERT_TRUE(service.come());
    install();
    ASSERT_TRUE(isAsked());
    service.fail(48);
    service.finish(2);
    EXPECT_TRUE(endsWith(InstallOutcome::forbidden));
}

TEST_F(PackageKitInstallerTest, KnowsTheNumbers) {
    const auto outcome = PackageKitTransaction::outcomeOf;
    EXPECT_EQ(outcome(1, {}), InstallOutcome::installed);
    EXPECT_EQ(outcome(2, {}), InstallOutcome::failed);
    EXPECT_EQ(outcome(2, 29), InstallOutcome::failed);
    EXPECT_EQ(outcome(2, 26), InstallOutcome::busy);
    EXPECT_EQ(outcome(9, {}), InstallOutcome::busy);
    EXPECT_EQ(outcome(2, 17), InstallOutcome::cancelled);
    EXPECT_EQ(outcome(3, {}), InstallOutcome::cancelled);
    EXPECT_EQ(outcome(2, 48), InstallOutcome::forbidden);
    EXPECT_EQ(outcome(0, {}), InstallOutcome::failed);
    EXPECT_EQ(outcome(4'000'000'000, 4'000'000'000), InstallOutcome::failed);
}

TEST_F(PackageKitInstallerTest, ACallThatIsRefusedIsTheEnd) {
    ASSERT_TRUE(service.come());
    service.installError = "org.freedesktop.PackageKit.Transaction.RefusedByPolicy";
    install();
    EXPECT_TRUE(endsWith(InstallOutcome::forbidden));
    outcomes.clear();
    service.installError = "org.freedesktop.PackageKit.Transaction.NotSupported";
    install();
    EXPECT_TRUE(endsWith(InstallOutcome::failed));
    outcomes.clear();
    service.creationError = "org.freedesktop.DBus.Error.AccessDenied";
    install();
    EXPECT_TRUE(endsWith(InstallOutcome::forbidden));
}

TEST_F(PackageKitInstallerTest, WithoutTheServiceOrABusNobodyInstalls) {
    install();
    EXPECT_TRUE(endsWith(InstallOutcome::absent));
    SystemBus none(time, [] { return std::nullopt; });
    PackageKitInstaller alone(time, none);
    outcomes.clear();
    task = alone.install("/veslora.deb", [this](InstallOutcome outcome) { outcomes.push_back(outcome); });
    EXPECT_TRUE(endsWith(InstallOutcome::absent));
}

TEST_F(PackageKitInstallerTest, OneThatGoesMeanwhileHasFailed) {
    auto gone = std::make_unique<MockPackageKit>(bus.connect());
    ASSERT_TRUE(gone->come());
    install();
    ASSERT_TRUE(waitFor([&] { return !gone->installed.isEmpty(); }));
    // Its connection closes, as with its end.
    const QString name = gone->connectionName();
    gone.reset();
    bus.disconnect(QDBusConnection(name));
    EXPECT_TRUE(endsWith(InstallOutcome::failed));
}

TEST_F(PackageKitInstallerTest, OneThatHangsBeforeItHasBegunHasFailed) {
    ASSERT_TRUE(service.come());
    service.hangs = true;
    install();
    ASSERT_TRUE(waitFor([this] { return service.isHanging(); }));
    time.advance(PackageKitTransaction::longestMaking - 1);
    EXPECT_THAT(outcomes, IsEmpty());
    time.advance(1);
    EXPECT_THAT(outcomes, ElementsAre(InstallOutcome::failed));
    service.answerLate();
    handleEventsFor(50);
    EXPECT_THAT(service.installed, IsEmpty()) << "it was given up";
}

TEST_F(PackageKitInstallerTest, WhatHasBegunMayTakeAnyTime) {
    ASSERT_TRUE(service.come());
    install();
    ASSERT_TRUE(isAsked());
    time.advance(24 * 60 * 60);
    handleEventsFor(50);
    EXPECT_THAT(outcomes, IsEmpty()) << "the user may look for a password";
    service.finish(1);
    EXPECT_TRUE(endsWith(InstallOutcome::installed));
}

TEST_F(PackageKitInstallerTest, WhoLetsGoHearsNothingMore) {
    ASSERT_TRUE(service.come());
    install();
    ASSERT_TRUE(isAsked());
    task.cancel();
    service.finish(1);
    handleEventsFor(50);
    EXPECT_THAT(outcomes, IsEmpty());
}

} // namespace
} // namespace veslora
