// SPDX-License-Identifier: MIT
// Whether Spotify can be controlled, as its player comes to the bus and goes.
#include "VesloraLinux/DBus/SpotifyPermission.h"
#include "tests/VesloraLinux/DBus/MockPlayer.h"
#include "tests/VesloraLinux/Support/PrivateBus.h"
#include "tests/VesloraLinux/Support/Waiting.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace veslora {
namespace {

using testing::handleEventsFor;
using testing::waitUntil;

class SpotifyPermissionTest : public ::testing::Test {
  protected:
    [[nodiscard]] AutomationStatus spotify() { return permission.status("com.spotify.client"); }

    testing::CoreApplication application;
    testing::PrivateBus bus;
    testing::MockPlayer player{bus.connect()};
    SpotifyPermission permission{bus.connect()};
    QSignalSpy changes{&permission, &AutomationPermission::statusChanged};
};

TEST_F(SpotifyPermissionTest, FindsThePlayerThatIsThere) {
    ASSERT_TRUE(player.come());
    EXPECT_EQ(spotify(), AutomationStatus::appNotRunning) << "not known yet";
    ASSERT_TRUE(waitUntil([this] { return changes.count() == 1; }));
    EXPECT_EQ(spotify(), AutomationStatus::allowed);
}

TEST_F(SpotifyPermissionTest, FollowsItsComingAndGoing) {
    EXPECT_EQ(spotify(), AutomationStatus::appNotRunning);
    handleEventsFor(50);
    EXPECT_EQ(changes.count(), 0);
    ASSERT_TRUE(player.come());
    ASSERT_TRUE(waitUntil([this] { return changes.count() == 1; }));
    EXPECT_EQ(spotify(), AutomationStatus::allowed);
    player.leave();
    ASSERT_TRUE(waitUntil([this] { return changes.count() == 2; }));
    EXPECT_EQ(spotify(), AutomationStatus::appNotRunning);
}

TEST_F(SpotifyPermissionTest, AnotherPlayerAndAnotherNameAreNotIt) {
    testing::MockPlayer other(bus.connect(), "org.mpris.MediaPlayer2.vlc");
    ASSERT_TRUE(other.come());
    EXPECT_EQ(spotify(), AutomationStatus::appNotRunning);
    handleEventsFor(50);
    EXPECT_EQ(spotify(), AutomationStatus::appNotRunning);
    ASSERT_TRUE(player.come());
    ASSERT_TRUE(waitUntil([this] { return changes.count() == 1; }));
    EXPECT_EQ(permission.status("org.videolan.vlc"), AutomationStatus::appNotRunning);
}

TEST(SpotifyPermissionWithoutABus, AllowsNothing) {
    SpotifyPermission permission(std::nullopt);
    EXPECT_EQ(permission.status("com.spotify.client"), AutomationStatus::appNotRunning);
}

} // namespace
} // namespace veslora
