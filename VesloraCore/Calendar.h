// SPDX-License-Identifier: MIT
// Where days begin and end. The rules of a time zone are data of the platform's, so the core asks this
// interface for them; a calendar never changes and may be asked on any thread.
#pragma once

#include "VesloraCore/Timestamp.h"

namespace veslora {

/// One calendar day: 23, 24 or 25 hours where clocks are changed.
struct DaySpan {
    Timestamp start = 0;
    Timestamp end = 0; ///< the next day's start
    [[nodiscard]] bool contains(Timestamp time) const { return time >= start && time < end; }
    bool operator==(const DaySpan&) const = default;
};

class Calendar {
  public:
    virtual ~Calendar() = default;

    /// The day that holds `time`, which is finite.
    [[nodiscard]] virtual DaySpan dayOf(Timestamp time) const = 0;
};

} // namespace veslora
