// SPDX-License-Identifier: MIT
#include "MediaAdapter/TrackIdentity.h"

#include <gtest/gtest.h>

namespace veslora {
namespace {

TEST(TrackIdentityTests, IsThePlayersOwnWhereThatTellsTracksApart) {
    TrackIdentity identity;
    EXPECT_EQ(identity.identify({.id = "/track/1", .title = "One"}), "/track/1");
    EXPECT_EQ(identity.identify({.id = "/track/2", .title = "Two"}), "/track/2");
    EXPECT_EQ(identity.identify({.id = "/track/1", .title = "One"}), "/track/1");
}

TEST(TrackIdentityTests, StaysWhileATrackIsFilledIn) {
    TrackIdentity identity;
    EXPECT_EQ(identity.identify({.id = "/track/1"}), "/track/1");
    EXPECT_EQ(identity.identify({.id = "/track/1", .title = "One"}), "/track/1");
    EXPECT_EQ(identity.identify({.id = "/track/1", .title = "One", .artist = "Somebody"}), "/track/1");
}

TEST(TrackIdentityTests, IsAnotherForEachTitleOfAnIdThatNeverChanges) {
    TrackIdentity identity;
    const std::string one = identity.identify({.id = "/0", .title = "One"});
    const std::string two = identity.identify({.id = "/0", .title = "Two"});
    const std::string three = identity.identify({.id = "/0", .title = "Three"});
    EXPECT_NE(one, two);
    EXPECT_NE(two, three);
    EXPECT_EQ(identity.identify({.id = "/0", .title = "Three"}), three);
    EXPECT_NE(identity.identify({.id = "/0", .title = "Three", .artist = "Another"}), three);
    EXPECT_NE(identity.identify({.id = "/0", .title = "Three", .length = 7}), three);
}

TEST(TrackIdentityTests, TrustsTheNextIdOnceItChanges) {
    TrackIdentity identity;
    (void)identity.identify({.id = "/0", .title = "One"});
    EXPECT_NE(identity.identify({.id = "/0", .title = "Two"}), "/0");
    EXPECT_EQ(identity.identify({.id = "/1", .title = "Three"}), "/1");
}

TEST(TrackIdentityTests, IsAnotherForTheNextTitleAlsoWhereThereWasNoIdInBetween) {
    TrackIdentity identity;
    const std::string one = identity.identify({.id = "/0", .title = "One"});
    EXPECT_NE(identity.identify({.title = "One"}), "");
    EXPECT_EQ(identity.identify({}), "");
    EXPECT_EQ(identity.identify({.id = "/0"}), "/0");
    EXPECT_NE(identity.identify({.id = "/0", .title = "Two"}), one);
}

TEST(TrackIdentityTests, IsMadeOfTheTrackWhereThePlayerGivesNone) {
    TrackIdentity identity;
    EXPECT_EQ(identity.identify({}), "");
    const std::string one = identity.identify({.title = "One"});
    EXPECT_FALSE(one.empty());
    EXPECT_NE(identity.identify({.title = "Two"}), one);
}

} // namespace
} // namespace veslora
