// SPDX-License-Identifier: MIT
// Decides whether a finger that moves over a touchscreen turns a page of the rack. Plain values without a
// clock.
#pragma once

namespace veslora {

/// One finger, from its touch to its end.
class FingerSwipe {
  public:
    /// Points that a finger may tremble before it is moving at all.
    static constexpr double slop = 10;
    /// Points to either side that turn a page.
    static constexpr double distance = 60;

    /// Where the finger is now, in points from where it went down, to the right and downwards. How far to
    /// turn the page: the next one, 1, is drawn in from the right by a finger that moves to the left; -1 or,
    /// mostly, 0. A finger turns one page, however far it goes.
    int moveTo(double x, double y);

    /// The finger means the page, and not what lies below it. Decided once, by the way in which it sets out.
    [[nodiscard]] bool isSideways() const { return m_way == Way::sideways; }

  private:
    enum class Way { undecided, sideways, other };

    Way m_way = Way::undecided;
    bool m_hasTurned = false;
};

} // namespace veslora
