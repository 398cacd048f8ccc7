// SPDX-License-Identifier: MIT
// The desktop's look by its settings portal, which comes late, goes, comes back, hesitates and changes its
// mind, and by files where there is none.
#include "VesloraLinux/DBus/LinuxAppearance.h"
#include "tests/VesloraLinux/DBus/MockPortal.h"
#include "tests/VesloraLinux/Support/PrivateBus.h"
#include "tests/VesloraLinux/Support/Waiting.h"
#include "tests/support/AppearancePrinting.h"
#include "tests/support/FakeDirectoryWatcher.h"
#include "tests/support/MemoryFiles.h"

#include <QSignalSpy>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veslora {
namespace {

using testing::handleEventsFor;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using testing::waitUntil;

const QString common = QStringLiteral("org.freedesktop.appearance");
const QString colorScheme = QStringLiteral("color-scheme");
const std::string home = "/home/me/.config";

class LinuxAppearanceTest : public ::testing::Test {
  protected:
    LinuxAppearanceTest() { portal.groups[common] = {{colorScheme, 1U}}; }

    [[nodiscard]] ColorScheme scheme() const { return appearance.current().colorScheme; }
    [[nodiscard]] bool becomes(ColorScheme expected) {
        return waitUntil([&] { return scheme() == expected; });
    }
    void putFile(const std::string& name) {
        disk.put(home + "/kdeglobals", "[General]\nColorScheme=" + name + "\n");
        watches.fire(home);
    }
    /// As long as a portal that answers takes at most.
    void waitInVain() { handleEventsFor(50); }

    testing::CoreApplication application;
    testing::PrivateBus bus;
    testing::MockPortal portal{bus.connect()};
    MemoryFiles disk;
    FakeDirectoryWatcher watches;
    LinuxAppearance appearance{bus.connect(), AppearanceFiles(disk, watches, home)};
    QSignalSpy changes{&appearance, &Appearance::changed};
};

TEST_F(LinuxAppearanceTest, AsksNobodyBeforeItIsToldTo) {
    ASSERT_TRUE(portal.come());
    waitInVain();
    EXPECT_THAT(portal.asked, IsEmpty());
    EXPECT_THAT(watches.watched(), IsEmpty());
    EXPECT_EQ(disk.reads(), 0);
    EXPECT_EQ(appearance.current(), DesktopAppearance());
}

TEST_F(LinuxAppearanceTest, ReadsThePortalThatIsThere) {
    portal.groups = {{common, {{colorScheme, 2U}, {"contrast", 1U}, {"accent-color", "blue"}}},
                     {"org.gnome.desktop.interface",
                      {{"text-scaling-factor", 1.5}, {"enable-animations", false}, {"clock-format", "24h"}}}};
    ASSERT_TRUE(portal.come());
    appearance.follow();
    EXPECT_EQ(appearance.current(), DesktopAppearance()) << "it does not wait";
    ASSERT_TRUE(becomes(ColorScheme::light));
    EXPECT_EQ(appearance.current(), (DesktopAppearance{.isTold = true,
                                                       .colorScheme = ColorScheme::light,
                                                       .highContrast = true,
                                                       .reducedMotion = true,
                                                       .textScale = 1.5}));
    EXPECT_EQ(changes.count(), 1);
    EXPECT_THAT(portal.asked, SizeIs(1));
    EXPECT_EQ(portal.asked.front(), PortalAppearance::namespaces());
    EXPECT_THAT(watches.watched(), IsEmpty());
    EXPECT_EQ(disk.reads(), 0) << "no file is of any interest";
}

TEST_F(LinuxAppearanceTest, FollowsItsChanges) {
    ASSERT_TRUE(portal.come());
    appearance.follow();
    ASSERT_TRUE(becomes(ColorScheme::dark));
    portal.change(common, colorScheme, 2U);
    ASSERT_TRUE(becomes(ColorScheme::light));
    portal.change("org.gnome.desktop.interface", "text-scaling-factor", 2.0);
    ASSERT_TRUE(waitUntil([this] { return appearance.current().textScale == 2; }));
    EXPECT_EQ(scheme(), ColorScheme::light);
    EXPECT_EQ(changes.count(), 3);
    EXPECT_THAT(portal.asked, SizeIs(1)) << "what changed was told with its value";
}

TEST_F(LinuxAppearanceTest, AChangeOfSomethingElseIsNoChange) {
    ASSERT_TRUE(portal.come());
    appearance.follow();
    ASSERT_TRUE(becomes(ColorScheme::dark));
    portal.change("org.gnome.desktop.interface", "clock-format", "12h");
    portal.change(common, colorScheme, 1U);
    waitInVain();
    EXPECT_EQ(changes.count(), 1);
    EXPECT_THAT(portal.asked, SizeIs(1));
}

TEST_F(LinuxAppearanceTest, NobodyElseSpeaksForThePortal) {
    ASSERT_TRUE(portal.come());
    appearance.follow();
    ASSERT_TRUE(becomes(ColorScheme::dark));
    testing::MockPortal stranger(bus.connect());
    stranger.announce(common, colorScheme, 2U);
    waitInVain();
    EXPECT_EQ(scheme(), ColorScheme::dark);
}

TEST_F(LinuxAppearanceTest, OneThatStartsLateIsHeardAndReplacesTheFiles) {
    putFile("BreezeLight");
    appearance.follow();
    ASSERT_TRUE(becomes(ColorScheme::light));
    EXPECT_THAT(watches.watched(), ::testing::Contains(home));
    ASSERT_TRUE(portal.come());
    ASSERT_TRUE(becomes(ColorScheme::dark));
    EXPECT_THAT(watches.watched(), IsEmpty());
    putFile("BreezeLight");
    EXPECT_EQ(scheme(), ColorScheme::dark);
}

TEST_F(LinuxAppearanceTest, ItsLastWordHoldsWhileItIsAway) {
    putFile("BreezeLight");
    ASSERT_TRUE(portal.come());
    appearance.follow();
    ASSERT_TRUE(becomes(ColorScheme::dark));
    portal.leave();
    waitInVain();
    EXPECT_EQ(scheme(), ColorScheme::dark);
    portal.announce(common, colorScheme, 2U);
    waitInVain();
    EXPECT_EQ(scheme(), ColorScheme::dark) << "no portal any more";
    portal.groups[common][colorScheme] = 2U;
    ASSERT_TRUE(portal.come());
    ASSERT_TRUE(becomes(ColorScheme::light)) << "what changed meanwhile";
    portal.change(common, colorScheme, 1U);
    ASSERT_TRUE(becomes(ColorScheme::dark)) << "heard again";
    EXPECT_EQ(changes.count(), 3);
}

TEST_F(LinuxAppearanceTest, AnotherOneMayTakeItsPlace) {
    ASSERT_TRUE(portal.come());
    appearance.follow();
    ASSERT_TRUE(becomes(ColorScheme::dark));
    testing::MockPortal next(bus.connect());
    next.groups[common] = {{colorScheme, 2U}};
    portal.leave();
    ASSERT_TRUE(next.come());
    ASSERT_TRUE(becomes(ColorScheme::light));
    portal.announce(common, colorScheme, 1U);
    waitInVain();
    EXPECT_EQ(scheme(), ColorScheme::light);
}

TEST_F(LinuxAppearanceTest, TheAnswerOfOneThatHasGoneDoesNotCount) {
    portal.hesitates = true;
    ASSERT_TRUE(portal.come());
    appearance.follow();
    ASSERT_TRUE(waitUntil([this] { return portal.asked.size() == 1; }));
    testing::MockPortal next(bus.connect());
    next.groups[common] = {{colorScheme, 2U}};
    portal.leave();
    ASSERT_TRUE(next.come());
    ASSERT_TRUE(becomes(ColorScheme::light));
    portal.answerAll();
    waitInVain();
    EXPECT_EQ(scheme(), ColorScheme::light);
}

TEST_F(LinuxAppearanceTest, FilesServeWhereThePortalKnowsNothingOfIt) {
    portal.groups.clear();
    putFile("BreezeLight");
    ASSERT_TRUE(portal.come());
    appearance.follow();
    ASSERT_TRUE(becomes(ColorScheme::light));
    putFile("BreezeDark");
    EXPECT_EQ(scheme(), ColorScheme::dark) << "and are followed";
    // Its desktop's part has started.
    portal.change(common, colorScheme, 2U);
    ASSERT_TRUE(becomes(ColorScheme::light));
    putFile("BreezeDark");
    EXPECT_EQ(scheme(), ColorScheme::light);
}

TEST_F(LinuxAppearanceTest, FilesServeWhereThePortalRefusesOrAnswersSomethingElse) {
    putFile("BreezeLight");
    portal.refuses = true;
    ASSERT_TRUE(portal.come());
    appearance.follow();
    ASSERT_TRUE(becomes(ColorScheme::light));
    portal.leave();
    waitInVain();
    portal.refuses = false;
    for (const QVariant& odd : {QVariant("dark"), QVariant(QVariantMap{{common, 1U}}), QVariant(1U),
                                QVariant(QStringList{common, colorScheme})}) {
        portal.oddAnswer = odd;
        const auto before = portal.asked.size();
        ASSERT_TRUE(portal.come());
        ASSERT_TRUE(waitUntil([&] { return portal.asked.size() > before; }));
        waitInVain();
        EXPECT_EQ(scheme(), ColorScheme::light);
        portal.leave();
        waitInVain();
    }
}

TEST_F(LinuxAppearanceTest, TheBusGoesUnderIt) {
    ASSERT_TRUE(portal.come());
    appearance.follow();
    ASSERT_TRUE(becomes(ColorScheme::dark));
    bus.kill();
    waitInVain();
    EXPECT_EQ(scheme(), ColorScheme::dark);
}

TEST(LinuxAppearanceWithoutABus, ReadsTheFilesAtOnce) {
    MemoryFiles disk;
    FakeDirectoryWatcher watches;
    disk.put(home + "/kdeglobals", "[General]\nColorScheme=BreezeDark\n");
    LinuxAppearance appearance(std::nullopt, AppearanceFiles(disk, watches, home));
    EXPECT_EQ(disk.reads(), 0);
    appearance.follow();
    EXPECT_EQ(appearance.current().colorScheme, ColorScheme::dark);
}

class SilentPortalTest : public ::testing::Test {
  protected:
    static constexpr int limit = 200;

    testing::CoreApplication application;
    testing::PrivateBus bus;
    testing::MockPortal service{bus.connect()};
    SettingsPortal portal{bus.connect(), limit};
    QSignalSpy silences{&portal, &SettingsPortal::silent};
    QSignalSpy words{&portal, &SettingsPortal::told};
};

TEST_F(SilentPortalTest, IsNotWaitedForLongerThanTheLimit) {
    service.hesitates = true;
    ASSERT_TRUE(service.come());
    portal.follow();
    ASSERT_TRUE(waitUntil([this] { return silences.count() == 1; }));
    EXPECT_EQ(words.count(), 0);
    // It has come to itself; nobody asked it meanwhile.
    EXPECT_THAT(service.asked, SizeIs(1));
    service.hesitates = false;
    service.change(common, colorScheme, 1U);
    ASSERT_TRUE(waitUntil([this] { return words.count() == 1; }));
    EXPECT_EQ(words.front().front().value<DesktopAppearance>().colorScheme, ColorScheme::dark);
}

} // namespace
} // namespace veslora
