// SPDX-License-Identifier: MIT
// A music model on a machine that obeys a test, with short words for what its players do.
#pragma once

#include "VesloraUI/Music/MusicModel.h"
#include "tests/VesloraUI/Fixtures/Covers.h"
#include "tests/VesloraUI/Fixtures/FakeMusic.h"
#include "tests/VesloraUI/Fixtures/FakePlatform.h"

#include <gtest/gtest.h>

namespace veslora {

class MusicScene : public testing::Test {
  protected:
    MusicScene() {
        model.onChange = [this] { ++changes; };
        model.startObservingSpotify();
    }

    static SpotifyNotification::UserInfo track(const std::string& name,
                                               const std::string& state = "Playing") {
        return {{"Player State", state}, {"Name", name}, {"Track ID", "spotify:track:" + name}};
    }
    /// Spotify reports a track whose id is made of its name.
    void spotify(const std::string& name, const std::string& state = "Playing") {
        notifications.tell(track(name, state));
    }
    void spotifyStops() { notifications.tell({{"Player State", "Stopped"}}); }

    /// The adapter reports a player as a whole; `more` begins with a comma.
    void other(const std::string& title, const std::string& more = R"(,"playing":true)",
               const std::string& bundleID = "org.example.player") {
        model.receiveAdapterLine(R"({"type":"data","payload":{"title":")" + title +
                                 R"(","bundleIdentifier":")" + bundleID + '"' + more + "}}");
    }
    void otherDiff(const std::string& payload) {
        model.receiveAdapterLine(R"({"type":"data","diff":true,"payload":)" + payload + "}");
    }
    static std::string withCover(const QImage& image) {
        return R"(,"playing":true,"artworkData":")" + test::base64Of(image) + '"';
    }

    /// Has Spotify give an address for its current track's cover, and the web that cover.
    void serve(const QImage& image, const std::string& url = "https://i.example/cover") {
        scripts.results[artworkUrl] = url;
        web.images[url] = image;
    }
    /// Lets all fetches and all decoding end.
    void settle() {
        platform.advance(10);
        platform.time.runBackground();
    }

    [[nodiscard]] std::string shown() const { return model.track() ? model.track()->title : "nothing"; }

    const std::string artworkUrl = "tell application \"Spotify\" to artwork url of current track";

    FakePlatform platform;
    FakeDefaults settings{platform};
    FakeSpotify notifications;
    FakeScripts scripts{platform.time};
    FakeAdapter adapter;
    FakeArtwork web{platform.time};
    RecordingApps apps;
    MusicModel model{settings,
                     {.scheduler = platform.time,
                      .spotify = notifications,
                      .scripts = scripts,
                      .adapter = adapter,
                      .artwork = web,
                      .apps = apps}};
    int changes = 0;
};

} // namespace veslora
