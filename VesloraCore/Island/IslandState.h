// SPDX-License-Identifier: MIT
// What the island looks like as a whole, and how large it is then.
#pragma once

#include "VesloraCore/Island/Geometry.h"
#include "VesloraCore/Island/LiveActivity.h"

#include <limits>
#include <optional>

namespace veslora {

enum class IslandState {
    closed,
    liveActivity,
    musicActivity,
    metronomeActivity,
    claudeActivity,
    claudeWorkingActivity,
    keepAwakeActivity,
    alert,
    claudeAlert,
    expanded,
};

/// An open island hides every alert.
[[nodiscard]] IslandState islandStateOf(bool isExpanded, LiveActivityKind kind);

/// Whether the island reaches out from the screen's edge, with a shadow and a hairline: every alert, and
/// open.
[[nodiscard]] bool isOpen(IslandState state);

/// Everything that decides the island's size.
struct IslandLayoutInputs {
    IslandState state = IslandState::closed;
    Size notchSize;
    Size alertSize;                  ///< of the whole island in an ordinary alert, the notch included
    Size expandedSize;               ///< of the whole island open; only its height counts
    std::optional<double> wingWidth; ///< of one wing; absent where the state has none
    bool hasPendingRequests = false; ///< an agent's request can be answered here
    double islandWidth = 0;          ///< the rack's wish for the open island
    bool isEditing = false;
    /// Of the screen, which no island is wider than.
    double screenWidth = std::numeric_limits<double>::infinity();
};

/// The frame of the island, which hangs from the middle of the screen's top edge, and the radii of its
/// outline.
struct IslandLayout {
    double width = 0;
    double height = 0;
    double topRadius = 0;
    double bottomRadius = 0;
    bool operator==(const IslandLayout&) const = default;
};

[[nodiscard]] IslandLayout islandLayout(const IslandLayoutInputs& inputs);

} // namespace veslora
