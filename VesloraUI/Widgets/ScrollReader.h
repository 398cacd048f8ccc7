// SPDX-License-Identifier: MIT
// Reads the toolkit's events of wheels and touchpads as movements that can turn a page. Main thread only.
#pragma once

#include "VesloraCore/Widgets/PageSwipe.h"
#include "VesloraUI/Platform/ScrollDevices.h"

#include <optional>

class QWheelEvent;

namespace veslora {

class ScrollReader {
  public:
    /// `source` is what is known of the event's device. Where nothing is, phases, distances in pixels and
    /// fractions of a notch tell of fingers; a fine wheel then counts as fingers too.
    [[nodiscard]] PageScroll read(const QWheelEvent& event, ScrollSource source);

    /// What was read last has been used. Until that is said, a gesture goes on being told as one that begins:
    /// window systems tell of its beginning by an event that moves nothing, and it may first move downwards.
    void used() { m_hasBegun = false; }

  private:
    [[nodiscard]] bool isOfFingers(const QWheelEvent& event, ScrollSource source);
    [[nodiscard]] PageScroll::Phase phaseOf(const QWheelEvent& event) const;

    bool m_hasBegun = false;
    std::optional<double> m_lastOfFingers; ///< when fractions of a notch told of them
};

} // namespace veslora
