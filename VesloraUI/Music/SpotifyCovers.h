// SPDX-License-Identifier: MIT
// Fetches the covers of Spotify's tracks: Spotify tells the address, and the web has the picture. Main thread
// only.
#pragma once

#include "VesloraUI/Music/CoverCache.h"
#include "VesloraUI/Platform/ArtworkLoading.h"
#include "VesloraUI/Platform/ScriptRunning.h"

#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace veslora {

class SpotifyCovers {
  public:
    /// What the owner is asked and told.
    struct Owner {
        /// Whether that track is the one that Spotify was last reported to play.
        std::function<bool(const std::string& trackID)> isCurrent;
        /// The cover is in the cache now.
        std::function<void(const std::string& trackID)> fetched;
    };

    SpotifyCovers(ScriptRunning& scripts, ArtworkLoading& loading, Owner owner);

    /// Null where the track's cover was not fetched, or long ago.
    [[nodiscard]] const QImage* find(std::string_view trackID) const { return m_cache.find(trackID); }

    /// Fetches the cover of the track that Spotify plays, unless that is under way. A fetch goes on when the
    /// track has moved on meanwhile. One that fails is silent.
    void fetch(const std::string& trackID);

  private:
    void load(const std::string& trackID, const ScriptRunning::Result& answer);
    void store(const std::string& trackID, const QImage& cover);

    ScriptRunning& m_scripts;
    ArtworkLoading& m_loading;
    Owner m_owner;
    CoverCache m_cache;
    std::map<std::string, Task, std::less<>> m_fetches; ///< those under way, by track
};

} // namespace veslora
