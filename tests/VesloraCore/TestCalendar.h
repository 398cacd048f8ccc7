// SPDX-License-Identifier: MIT
// A calendar whose days all have 24 hours and begin at a fixed distance from UTC's.
#pragma once

#include "VesloraCore/Calendar.h"

#include <cmath>
#include <memory>

namespace veslora {

class FixedCalendar final : public Calendar {
  public:
    /// `offset` is how many seconds the place's clocks are ahead of UTC.
    explicit FixedCalendar(double offset = 0) : m_offset(offset) {}

    [[nodiscard]] DaySpan dayOf(Timestamp time) const override {
        constexpr double day = 86400;
        const Timestamp start = std::floor((time + m_offset) / day) * day - m_offset;
        return {start, start + day};
    }

  private:
    double m_offset = 0;
};

inline std::shared_ptr<const Calendar> fixedCalendar(double offset = 0) {
    return std::make_shared<FixedCalendar>(offset);
}

} // namespace veslora
