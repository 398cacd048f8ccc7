// SPDX-License-Identifier: MIT
// Tells a player's tracks apart, also where the player gives all of them one id, or none. One for each
// player, any thread, one at a time.
#pragma once

#include "MediaAdapter/Player.h"

#include <string>

namespace veslora {

class TrackIdentity {
  public:
    /// The identifier of the player's track: its own one for as long as that is seen to tell tracks apart,
    /// and from then on one that title, artist and length are part of. Empty for a track without a title and
    /// id.
    [[nodiscard]] std::string identify(const Track& track);

  private:
    std::string m_id;
    std::string m_title;
    bool m_isAmbiguous = false;
};

} // namespace veslora
