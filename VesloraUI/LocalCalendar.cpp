// SPDX-License-Identifier: MIT
#include "VesloraUI/LocalCalendar.h"

#include <QDateTime>

#include <algorithm>
#include <cmath>

namespace veslora {

namespace {

/// Dates that Qt can tell, with room for a day more.
constexpr double farthest = 1e12;

QDateTime dateTime(Timestamp time, const std::optional<QTimeZone>& zone) {
    const auto milliseconds = static_cast<qint64>(std::floor(std::clamp(time, -farthest, farthest) * 1000));
    return zone ? QDateTime::fromMSecsSinceEpoch(milliseconds, *zone)
                : QDateTime::fromMSecsSinceEpoch(milliseconds, Qt::LocalTime);
}

/// Not always midnight: where clocks go forward at that hour the day begins later.
Timestamp startOf(QDate day, const std::optional<QTimeZone>& zone) {
    const QDateTime start = zone ? day.startOfDay(*zone) : day.startOfDay(Qt::LocalTime);
    return static_cast<double>(start.toMSecsSinceEpoch()) / 1000;
}

} // namespace

DaySpan LocalCalendar::dayOf(Timestamp time) const {
    const QDate day = dateTime(time, m_zone).date();
    return {startOf(day, m_zone), startOf(day.addDays(1), m_zone)};
}

} // namespace veslora
