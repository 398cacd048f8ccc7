// SPDX-License-Identifier: MIT
// Decides from the pointer's place and the clock alone whether the island is open and which of its areas take
// clicks. A plain value without a timer: its owner feeds it positions and wakes it at the deadline it
// names.
#pragma once

#include "VesloraCore/Island/NotchGeometry.h"
#include "VesloraCore/Timestamp.h"

#include <optional>
#include <vector>

namespace veslora {

/// Opening needs a rest in the small hot zone; closing is immediate once the pointer leaves the larger open
/// zone. What was opened by a command closes so only after the pointer has been in it. All points and
/// rectangles are in the screen's space.
class HoverTracker {
  public:
    static constexpr double notchSlack = 8; ///< grown round the hot zone, on every side

    HoverTracker(const NotchGeometry& geometry, double delay);

    std::optional<double> liveActivityWingWidth; ///< width of one wing shown while closed; absent for none
    bool isShowingAlert = false;                 ///< an alert keeps hovering from opening the island
    bool isAlertOnScreen = false;                ///< and has been drawn: before that it takes no clicks
    std::optional<Size> alertSize;               ///< body of the alert, where it differs from the default one
    bool isEditing = false;                      ///< edit mode, which makes the open zone taller
    double openDelay;                            ///< seconds to rest in the hot zone; 0 opens at once
    double expandedWidth;                        ///< width of the open island now, as drawn

    [[nodiscard]] bool isExpanded() const { return m_isExpanded; }
    [[nodiscard]] bool isPinnedOpen() const { return m_isPinnedOpen; }
    /// It was opened by `holdOpen`, and nothing has ended that yet.
    [[nodiscard]] bool isHeldOpen() const { return m_isHeldOpen; }
    [[nodiscard]] const NotchGeometry& geometry() const { return m_geometry; }

    /// Pinning opens the island too. Letting go changes nothing else: it stays open until the next `update`
    /// finds the pointer outside.
    void setPinnedOpen(bool isPinnedOpen);

    /// Opens the island, wherever the pointer is, and keeps it open until an `update` finds the pointer
    /// inside: from then on it is as if the pointer had opened it. An alert that comes meanwhile ends the
    /// hold too, since an open island would hide it; one that shows already was covered on purpose. One that
    /// is open already stays as it is.
    void holdOpen();

    /// Closes the island, held or not, but for a pinned one. A pointer that rests on it opens it only after
    /// it has left the hot zone, or the next movement would undo what the user has just asked for.
    void shut();

    /// True exactly when `isExpanded` changed in this call.
    bool update(Point mouse, Timestamp at);

    /// When a pointer that stays where it is will have rested long enough; absent while nothing is pending.
    [[nodiscard]] std::optional<Timestamp> pendingOpenDeadline() const;

    [[nodiscard]] bool acceptsClicks(Point at) const;

    /// The rectangles in which `acceptsClicks` is true; none while the island is closed without an alert.
    [[nodiscard]] std::vector<Rect> clickZones() const;

    /// The zone that arms the island. Absent while it is open and while an alert shows.
    [[nodiscard]] std::optional<Rect> hotZone() const;

    /// Where the pointer matters although a click there is not the island's: the zone that arms it, or round
    /// an island that is open and narrower than the zone that keeps it so, that zone.
    [[nodiscard]] std::optional<Rect> hoverZone() const;

    bool operator==(const HoverTracker&) const = default;

  private:
    [[nodiscard]] Rect openZone() const;
    [[nodiscard]] Rect drawnZone() const;
    bool updateClosed(Point mouse, Timestamp at);
    bool updateOpen(Point mouse);

    NotchGeometry m_geometry;
    bool m_isExpanded = false;
    bool m_isPinnedOpen = false;
    bool m_isHeldOpen = false;
    bool m_coversAlert = false;         ///< held open over an alert that showed before
    bool m_isShut = false;              ///< the pointer has not left the hot zone since `shut`
    std::optional<Timestamp> m_armedAt; ///< when the pointer came into the hot zone
};

} // namespace veslora
