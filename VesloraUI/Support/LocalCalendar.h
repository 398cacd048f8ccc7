// SPDX-License-Identifier: MIT
// Days as the user's own clocks tell them.
#pragma once

#include "VesloraCore/Calendar.h"

#include <QTimeZone>

#include <optional>

namespace veslora {

class LocalCalendar final : public Calendar {
  public:
    /// Of the machine's time zone, whichever that is at the time of asking.
    LocalCalendar() = default;
    explicit LocalCalendar(const QTimeZone& zone) : m_zone(zone) {}

    [[nodiscard]] DaySpan dayOf(Timestamp time) const override;

  private:
    std::optional<QTimeZone> m_zone;
};

} // namespace veslora
