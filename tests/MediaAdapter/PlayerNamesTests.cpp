// SPDX-License-Identifier: MIT
#include "MediaAdapter/PlayerNames.h"

#include <gtest/gtest.h>

namespace veslora {
namespace {

using PlayerNames::bundleIdentifier;

TEST(PlayerNamesTests, KnowsPlayersByTheirPrefix) {
    EXPECT_TRUE(PlayerNames::isPlayer("org.mpris.MediaPlayer2.vlc"));
    EXPECT_FALSE(PlayerNames::isPlayer("org.mpris.MediaPlayer2."));
    EXPECT_FALSE(PlayerNames::isPlayer("org.mpris.MediaPlayer2"));
    EXPECT_FALSE(PlayerNames::isPlayer("org.mpris.MediaPlayer2000.vlc"));
    EXPECT_FALSE(PlayerNames::isPlayer(""));
}

TEST(PlayerNamesTests, TakesTheRepeaterForNoPlayer) {
    EXPECT_FALSE(PlayerNames::isPlayer("org.mpris.MediaPlayer2.playerctld"));
    EXPECT_TRUE(PlayerNames::isPlayer("org.mpris.MediaPlayer2.playerctld2"));
}

TEST(PlayerNamesTests, CallsAPlayerByItsDesktopEntry) {
    EXPECT_EQ(bundleIdentifier("org.gnome.Music", "org.mpris.MediaPlayer2.GnomeMusic"), "org.gnome.Music");
    EXPECT_EQ(bundleIdentifier("/usr/share/applications/mpv.desktop", "org.mpris.MediaPlayer2.mpv"), "mpv");
}

TEST(PlayerNamesTests, CallsAPlayerWithoutOneByItsNameOnTheBus) {
    EXPECT_EQ(bundleIdentifier("", "org.mpris.MediaPlayer2.vlc"), "vlc");
    EXPECT_EQ(bundleIdentifier("", "org.mpris.MediaPlayer2.firefox.instance_1_23"), "firefox");
    EXPECT_EQ(bundleIdentifier("", "org.mpris.MediaPlayer2.chromium.instance4711"), "chromium");
    EXPECT_EQ(bundleIdentifier("", "org.mpris.MediaPlayer2.io.github.player"), "io.github.player");
}

TEST(PlayerNamesTests, CallsSpotifyTheSameHoweverItWasInstalled) {
    const std::string bus = "org.mpris.MediaPlayer2.spotify";
    for (const auto& [entry, name] : {std::pair<std::string, std::string>{"spotify", bus},
                                      {"com.spotify.Client", bus},
                                      {"spotify_spotify", bus},
                                      {"", bus},
                                      {"", bus + ".instance77"},
                                      {"Spotify", "org.mpris.MediaPlayer2.other"},
                                      {"something-else", bus}}) {
        EXPECT_EQ(bundleIdentifier(entry, name), "com.spotify.client") << entry << " at " << name;
    }
    EXPECT_EQ(bundleIdentifier("", "org.mpris.MediaPlayer2.spotifyd"), "spotifyd") << "another program";
}

} // namespace
} // namespace veslora
