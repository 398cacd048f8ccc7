// SPDX-License-Identifier: MIT
// What the stream says of the chosen player. Any thread, one at a time.
#pragma once

#include "MediaAdapter/Player.h"
#include "VesloraCore/Text/Json.h"

#include <string>

namespace veslora {

class PlayerReport {
  public:
    /// The payload, an object. `artwork` is base64, or empty. A player that is stopped and has no title gives
    /// an empty payload. The position's moment is the whole second that follows the reading, at which a
    /// playing track will have come that much further. Position and moment stay as they were for as long as
    /// they are still true.
    [[nodiscard]] Json payload(const Player& player, const std::string& artwork);

    /// The payload when there is no player at all.
    [[nodiscard]] Json nothing();

  private:
    struct Stamp {
        std::string player;
        std::string track;
        PlaybackStatus status = PlaybackStatus::stopped;
        double elapsed = 0;   ///< seconds, at `second`
        Timestamp second = 0; ///< whole
    };
    [[nodiscard]] static Stamp stampOf(const Player& player);
    void update(const Stamp& stamp);

    Stamp m_stamp;
};

} // namespace veslora
