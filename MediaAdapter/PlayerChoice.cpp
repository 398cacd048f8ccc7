// SPDX-License-Identifier: MIT
#include "MediaAdapter/PlayerChoice.h"

#include <algorithm>
#include <tuple>

namespace veslora::PlayerChoice {

const Player* choose(const std::vector<const Player*>& players) {
    const auto rank = [](const Player* player) {
        return std::tuple(player->status, player->lastStatusChange, player->connection);
    };
    const auto best = std::ranges::max_element(players, {}, rank);
    return best == players.end() ? nullptr : *best;
}

} // namespace veslora::PlayerChoice
