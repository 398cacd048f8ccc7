// SPDX-License-Identifier: MIT
#include "VesloraCore/Agents/AlertPause.h"

#include "VesloraCore/Overloaded.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace veslora::AlertPause {

namespace {

constexpr std::string_view tomorrow = "tomorrow";
constexpr double leastUntilTomorrow = 3 * hour;

/// Takes a number and the letter of its unit off the front of a text. Absent, and the text is as it was,
/// where it begins otherwise.
std::optional<int> takeNumber(std::string_view& text, char unit) {
    constexpr std::size_t mostDigits = 5;
    const std::size_t digits = std::min(text.find(unit), text.size());
    const bool isNumber = digits > 0 && digits <= mostDigits && digits < text.size() &&
                          text.find_first_not_of("0123456789") == digits;
    if (!isNumber) {
        return std::nullopt;
    }
    int number = 0;
    std::from_chars(text.data(), text.data() + digits, number);
    text.remove_prefix(digits + 1);
    return number;
}

/// On the day of `time`. Counted back from midnight: where clocks are changed, they are before 6 o'clock.
Timestamp morningOf(Timestamp time, const Calendar& calendar) {
    constexpr double sinceMorning = 18 * hour;
    return calendar.dayOf(time).end - sinceMorning;
}

Timestamp nextMorning(Timestamp now, const Calendar& calendar) {
    const Timestamp today = morningOf(now, calendar);
    return today - now > leastUntilTomorrow ? today : morningOf(calendar.dayOf(now).end, calendar);
}

} // namespace

std::optional<Length> parse(std::string_view text) {
    constexpr int minutesOfHour = 60;
    if (text == tomorrow) {
        return UntilTomorrow{};
    }
    const auto hours = takeNumber(text, 'h');
    const auto minutes = takeNumber(text, 'm');
    const bool isWhole = text.empty() && !(hours && minutes.value_or(0) >= minutesOfHour);
    const double seconds = hours.value_or(0) * hour + minutes.value_or(0) * minute;
    if (!isWhole || seconds < shortest || seconds > longest) {
        return std::nullopt;
    }
    return For{seconds};
}

std::string text(const Length& length) {
    return std::visit(
        Overloaded{[](const For& pause) { return std::to_string(std::lround(pause.seconds / minute)) + "m"; },
                   [](const UntilTomorrow&) { return std::string(tomorrow); }},
        length);
}

Timestamp endOf(const Length& length, Timestamp now, const Calendar& calendar) {
    const Timestamp end =
        std::visit(Overloaded{[&](const For& pause) { return now + pause.seconds; },
                              [&](const UntilTomorrow&) { return nextMorning(now, calendar); }},
                   length);
    // Down, as a pause of the longest length must not end beyond it.
    return std::floor(end);
}

std::optional<Timestamp> storedEnd(double stored, Timestamp now) {
    // In this form, since nothing is true of what is no number.
    const bool isAhead = stored > 0 && stored > now && stored - now <= longest;
    return isAhead ? std::optional(stored) : std::nullopt;
}

} // namespace veslora::AlertPause
