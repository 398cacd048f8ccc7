// SPDX-License-Identifier: MIT
// Times and dates as their reader writes them, in the reader's zone and locale.
#pragma once

#include "VesloraCore/Timestamp.h"

#include <QLocale>
#include <QString>

namespace veslora::LocalTime {

/// Hours and minutes, with a day period where the locale has one: "14:05", "2:05 PM".
[[nodiscard]] QString shortTime(Timestamp time, const QLocale& locale = {});

/// The pattern of `shortTime`, made of that of the locale's short time: without seconds, of which some
/// places' short form has some, and without a zone.
[[nodiscard]] QString shortTimeFormat(const QString& format);

/// Weekday, day and month, the names abbreviated, in the locale's order: "Sat 21 Nov", "Sat Nov 21".
[[nodiscard]] QString shortDate(Timestamp time, const QLocale& locale = {});

/// The pattern of `shortDate`, made of that of the locale's long date. A mark that belongs to the number of
/// the day, as the dot in "21.", stays with it; all other words and marks go, and so does the year. Where a
/// place's long date names no weekday it comes first.
[[nodiscard]] QString shortDateFormat(const QString& longFormat);

} // namespace veslora::LocalTime
