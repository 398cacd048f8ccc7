// SPDX-License-Identifier: MIT
// A calendar for tests, whose days all have one length.
#pragma once

#include "VesloraCore/Calendar.h"

#include <cmath>
#include <memory>

namespace veslora::test {

class FixedCalendar final : public Calendar {
  public:
    /// Days begin `offset` seconds after those of UTC.
    explicit FixedCalendar(double offset = 0) : m_offset(offset) {}

    [[nodiscard]] DaySpan dayOf(Timestamp time) const override {
        constexpr double length = 86'400;
        const double start = std::floor((time - m_offset) / length) * length + m_offset;
        return {start, start + length};
    }

  private:
    double m_offset;
};

inline std::shared_ptr<const Calendar> fixedCalendar(double offset = 0) {
    return std::make_shared<FixedCalendar>(offset);
}

} // namespace veslora::test
