// SPDX-License-Identifier: MIT
// Which of several players the user means. Pure function, any thread.
#pragma once

#include "MediaAdapter/Player.h"

#include <vector>

namespace veslora::PlayerChoice {

/// One that plays comes before one that is paused, and that before one that is stopped; of equal ones the one
/// whose status changed last, and of those the one that came to the bus last. Null when there is none.
[[nodiscard]] const Player* choose(const std::vector<const Player*>& players);

} // namespace veslora::PlayerChoice
