// SPDX-License-Identifier: MIT
// How long alerts are paused: the lengths that a user may name, and the moment at which a pause is over.
#pragma once

#include "VesloraCore/Calendar.h"

#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace veslora::AlertPause {

inline constexpr double minute = 60;
inline constexpr double hour = 60 * minute;
inline constexpr double shortest = minute;
/// No pause lasts longer, whatever a settings file says and whatever the clock is set to.
inline constexpr double longest = 7 * 24 * hour;

/// For so many seconds.
struct For {
    double seconds = hour;
    bool operator==(const For&) const = default;
};
/// Until the first 6 o'clock in the morning that is more than three hours ahead.
struct UntilTomorrow {
    bool operator==(const UntilTomorrow&) const = default;
};
using Length = std::variant<For, UntilTomorrow>;

/// "30m", "1h", "2h30m" or "tomorrow", from a minute to seven days. After hours there are less than 60
/// minutes. Absent for any other text.
[[nodiscard]] std::optional<Length> parse(std::string_view text);
/// A text that `parse` reads as that length, of whole minutes.
[[nodiscard]] std::string text(const Length& length);

/// When a pause that begins now is over: a whole second.
[[nodiscard]] Timestamp endOf(const Length& length, Timestamp now, const Calendar& calendar);

/// The end that a stored number of seconds since 1970 stands for. Absent where it stands for no pause: it has
/// passed, is further ahead than any pause lasts, or is no moment at all.
[[nodiscard]] std::optional<Timestamp> storedEnd(double stored, Timestamp now);

} // namespace veslora::AlertPause
