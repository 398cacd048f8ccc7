// SPDX-License-Identifier: MIT
// Do-not-disturb by the word of a notification service that comes late, goes, is replaced, hesitates, knows
// nothing of it or says odd things.
#include "VesloraLinux/DBus/InhibitedNotifications.h"
#include "VesloraLinux/DBus/LinuxDoNotDisturb.h"
#include "tests/VesloraLinux/DBus/MockNotifications.h"
#include "tests/VesloraLinux/Support/PrivateBus.h"
#include "tests/VesloraLinux/Support/Waiting.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace veslora {
namespace {

using testing::handleEventsFor;
using testing::MockNotifications;
using testing::waitUntil;

class InhibitedNotificationsTest : public ::testing::Test {
  protected:
    [[nodiscard]] bool becomes(bool areHeldBack) {
        return waitUntil([&] { return notifications.areHeldBack() == areHeldBack; });
    }
    [[nodiscard]] bool isAsked(int times) {
        return waitUntil([&] { return service.asked == times; });
    }
    /// As long as a service that answers takes at most.
    void waitInVain() { handleEventsFor(50); }

    testing::CoreApplication application;
    testing::PrivateBus bus;
    MockNotifications service{bus.connect()};
    InhibitedNotifications notifications{bus.connect()};
    QSignalSpy changes{&notifications, &InhibitedNotifications::changed};
};

TEST_F(InhibitedNotificationsTest, AsksNobodyBeforeItIsToldTo) {
    ASSERT_TRUE(service.come());
    waitInVain();
    EXPECT_EQ(service.asked, 0);
}

TEST_F(InhibitedNotificationsTest, ReadsTheServiceThatIsThereAndFollowsIt) {
    service.inhibited = true;
    ASSERT_TRUE(service.come());
    notifications.follow();
    EXPECT_FALSE(notifications.areHeldBack()) << "it does not wait";
    ASSERT_TRUE(becomes(true));
    service.change(false);
    ASSERT_TRUE(becomes(false));
    service.change(true);
    ASSERT_TRUE(becomes(true));
    EXPECT_EQ(changes.count(), 3);
    EXPECT_EQ(service.asked, 1) << "what changed was told with its value";
}

TEST_F(InhibitedNotificationsTest, WhatIsOnlySaidToHaveChangedIsReadAgain) {
    ASSERT_TRUE(service.come());
    notifications.follow();
    ASSERT_TRUE(isAsked(1));
    service.changeUntold(true);
    ASSERT_TRUE(becomes(true));
    EXPECT_EQ(service.asked, 2);
}

TEST_F(InhibitedNotificationsTest, OneThatStartsLateIsHeard) {
    notifications.follow();
    waitInVain();
    service.inhibited = true;
    ASSERT_TRUE(service.come());
    ASSERT_TRUE(becomes(true));
}

TEST_F(InhibitedNotificationsTest, OneThatGoesHoldsNothingBackAndMayComeAgain) {
    service.inhibited = true;
    ASSERT_TRUE(service.come());
    notifications.follow();
    ASSERT_TRUE(becomes(true));
    service.leave();
    ASSERT_TRUE(becomes(false));
    service.change(true);
    waitInVain();
    EXPECT_FALSE(notifications.areHeldBack()) << "no service any more";
    ASSERT_TRUE(service.come());
    ASSERT_TRUE(becomes(true));
}

TEST_F(InhibitedNotificationsTest, AnotherMayTakeItsPlaceAndNobodyElseIsHeard) {
    service.inhibited = true;
    ASSERT_TRUE(service.come());
    notifications.follow();
    ASSERT_TRUE(becomes(true));
    MockNotifications next(bus.connect());
    service.leave();
    ASSERT_TRUE(next.come());
    ASSERT_TRUE(becomes(false));
    ASSERT_TRUE(waitUntil([&] { return next.asked == 1; }));
    service.change(true);
    waitInVain();
    EXPECT_FALSE(notifications.areHeldBack());
    next.change(true);
    ASSERT_TRUE(becomes(true));
}

TEST_F(InhibitedNotificationsTest, TheAnswerOfOneThatHasGoneDoesNotCount) {
    service.inhibited = true;
    service.hesitates = true;
    ASSERT_TRUE(service.come());
    notifications.follow();
    ASSERT_TRUE(isAsked(1));
    service.leave();
    waitInVain();
    service.answerAll();
    waitInVain();
    EXPECT_FALSE(notifications.areHeldBack());
    EXPECT_EQ(changes.count(), 0);
}

TEST_F(InhibitedNotificationsTest, OneThatNeverAnswersHoldsNothingBack) {
    InhibitedNotifications hasty(bus.connect(), 30);
    service.inhibited = true;
    service.hesitates = true;
    ASSERT_TRUE(service.come());
    hasty.follow();
    ASSERT_TRUE(isAsked(1));
    waitInVain();
    EXPECT_FALSE(hasty.areHeldBack());
    service.change(true);
    ASSERT_TRUE(waitUntil([&] { return hasty.areHeldBack(); })) << "it has come to itself";
}

TEST_F(InhibitedNotificationsTest, AServiceWithoutThePropertyHoldsNothingBack) {
    service.inhibited = {};
    ASSERT_TRUE(service.come());
    notifications.follow();
    ASSERT_TRUE(isAsked(1));
    waitInVain();
    EXPECT_FALSE(notifications.areHeldBack());
}

TEST_F(InhibitedNotificationsTest, AValueOfAnotherTypeSaysNothing) {
    for (const QVariant& odd : {QVariant("true"), QVariant(1), QVariant(1U), QVariant(QStringList{"true"})}) {
        service.inhibited = odd;
        ASSERT_TRUE(service.come());
        InhibitedNotifications other(bus.connect());
        const int before = service.asked;
        other.follow();
        ASSERT_TRUE(isAsked(before + 1));
        service.change(odd);
        waitInVain();
        EXPECT_FALSE(other.areHeldBack()) << odd.typeName();
        service.leave();
    }
    service.inhibited = true;
    ASSERT_TRUE(service.come());
    notifications.follow();
    ASSERT_TRUE(becomes(true));
    service.change("false");
    waitInVain();
    EXPECT_TRUE(notifications.areHeldBack());
}

TEST_F(InhibitedNotificationsTest, OtherPropertiesAndInterfacesSayNothing) {
    ASSERT_TRUE(service.come());
    notifications.follow();
    ASSERT_TRUE(isAsked(1));
    service.announce("org.example.Other", {{MockNotifications::property, true}}, {});
    service.announce("org.example.Other", {}, {MockNotifications::property});
    service.announce(MockNotifications::name, {{"Other", true}}, {"Another"});
    waitInVain();
    EXPECT_FALSE(notifications.areHeldBack());
    EXPECT_EQ(service.asked, 1);
}

TEST_F(InhibitedNotificationsTest, IsTheDesktopsDoNotDisturb) {
    LinuxDoNotDisturb desktop(bus.connect(), "KDE");
    const QSignalSpy told(&desktop, &DoNotDisturb::changed);
    service.inhibited = true;
    ASSERT_TRUE(service.come());
    EXPECT_FALSE(desktop.isOn());
    desktop.follow();
    ASSERT_TRUE(waitUntil([&] { return desktop.isOn(); }));
    service.change(false);
    ASSERT_TRUE(waitUntil([&] { return !desktop.isOn(); }));
    EXPECT_EQ(told.count(), 2);
}

TEST_F(InhibitedNotificationsTest, WithoutABusItIsOff) {
    LinuxDoNotDisturb desktop(std::nullopt, "");
    desktop.follow();
    EXPECT_FALSE(desktop.isOn());
}

} // namespace
} // namespace veslora
