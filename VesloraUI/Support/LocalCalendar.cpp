// SPDX-License-Identifier: MIT
#include "VesloraUI/Support/LocalCalendar.h"

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
                : QDateTime::fromMSecsSinceEpoch(milliseconds);
}

/// Not always midnight: where clocks go forward at that hour the day begins later. Where they go back to it
/// midnight comes twice, and the day begins with the first.
Timestamp startOf(QDate day, const std::optional<QTimeZone>& zone) {
    const QDateTime start = zone ? day.startOfDay(*zone) : day.startOfDay();
    qint64 first = start.toMSecsSinceEpoch();
    const auto isOfDay = [&](qint64 moment) {
        return dateTime(static_cast<double>(moment) / 1000, zone).date() == day;
    };
    if (isOfDay(first - 1)) {
        constexpr qint64 farthestBack = qint64{12} * 3'600'000;
        qint64 before = first - farthestBack;
        while (first - before > 1) {
            const qint64 middle = before + (first - before) / 2;
            (isOfDay(middle) ? first : before) = middle;
        }
    }
    return static_cast<double>(first) / 1000;
}

} // namespace

DaySpan LocalCalendar::dayOf(Timestamp time) const {
    const QDate day = dateTime(time, m_zone).date();
    return {startOf(day, m_zone), startOf(day.addDays(1), m_zone)};
}

} // namespace veslora
