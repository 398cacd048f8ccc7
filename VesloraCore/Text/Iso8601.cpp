// SPDX-License-Identifier: MIT
// See Iso8601.h.
#include "VesloraCore/Text/Iso8601.h"

#include <chrono>

namespace veslora::Iso8601 {

namespace {

// Reads from the front of a text; once something did not fit, everything after it fails as well.
class Scanner {
  public:
    explicit Scanner(std::string_view text) : m_rest(text) {}

    int digits(std::size_t count) {
        int value = 0;
        for (std::size_t i = 0; i < count; ++i) {
            value = value * 10 + digit();
        }
        return value;
    }
    void literal(char expected) {
        if (!take(expected)) {
            m_isValid = false;
        }
    }
    bool take(char expected) {
        if (!m_rest.starts_with(expected)) {
            return false;
        }
        m_rest.remove_prefix(1);
        return true;
    }
    double fraction() {
        double value = 0;
        double place = 0.1;
        do {
            value += digit() * place;
            place /= 10;
        } while (startsWithDigit());
        return value;
    }
    bool isAtValidEnd() const { return m_isValid && m_rest.empty(); }

  private:
    bool startsWithDigit() const { return !m_rest.empty() && m_rest.front() >= '0' && m_rest.front() <= '9'; }
    int digit() {
        if (!startsWithDigit()) {
            m_isValid = false;
            return 0;
        }
        const int value = m_rest.front() - '0';
        m_rest.remove_prefix(1);
        return value;
    }

    std::string_view m_rest;
    bool m_isValid = true;
};

struct TimeOfDay {
    int hours = 0;
    int minutes = 0;
    [[nodiscard]] int seconds() const { return (hours * 60 + minutes) * 60; }
    [[nodiscard]] bool exists() const { return hours < 24 && minutes < 60; }
};

TimeOfDay timeOfDay(Scanner& scanner) {
    TimeOfDay time;
    time.hours = scanner.digits(2);
    scanner.literal(':');
    time.minutes = scanner.digits(2);
    return time;
}

// The day's number since 1970, in seconds; nothing for the 30th of February.
std::optional<double> dayStart(int year, int month, int day) {
    using namespace std::chrono;
    const year_month_day date{std::chrono::year(year), std::chrono::month(static_cast<unsigned>(month)),
                              std::chrono::day(static_cast<unsigned>(day))};
    if (!date.ok()) {
        return std::nullopt;
    }
    return static_cast<double>(sys_days(date).time_since_epoch().count()) * 86400.0;
}

} // namespace

std::optional<Timestamp> parse(std::string_view text, Fraction fraction) {
    Scanner scanner(text);
    const int year = scanner.digits(4);
    scanner.literal('-');
    const int month = scanner.digits(2);
    scanner.literal('-');
    const int day = scanner.digits(2);
    scanner.literal('T');
    const TimeOfDay time = timeOfDay(scanner);
    scanner.literal(':');
    const int seconds = scanner.digits(2);
    // A fraction that is refused is left over, so that the text does not end where it should.
    const double beyond = fraction == Fraction::allowed && scanner.take('.') ? scanner.fraction() : 0;
    TimeOfDay offset;
    double sign = 0;
    if (!scanner.take('Z')) {
        sign = scanner.take('-') ? -1 : 1;
        if (sign > 0) {
            scanner.literal('+');
        }
        offset = timeOfDay(scanner);
    }
    const std::optional<double> start = dayStart(year, month, day);
    if (!scanner.isAtValidEnd() || !start || !time.exists() || seconds > 59 || !offset.exists()) {
        return std::nullopt;
    }
    return *start + time.seconds() - sign * offset.seconds() + seconds + beyond;
}

} // namespace veslora::Iso8601
