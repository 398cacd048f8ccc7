// SPDX-License-Identifier: MIT
// See JsonText.h.
#include "VesloraCore/Text/JsonText.h"

#include <charconv>
#include <cmath>

namespace veslora::JsonText {

namespace {

constexpr char32_t replacement = 0xFFFD;

bool isDigit(char byte) {
    return byte >= '0' && byte <= '9';
}

bool isHighSurrogate(char32_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}

bool isLowSurrogate(char32_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

// Steps over one or more digits; false when there is none.
bool skipDigits(std::string_view text, std::size_t& at) {
    const std::size_t start = at;
    while (at < text.size() && isDigit(text[at])) {
        ++at;
    }
    return at > start;
}

// The code unit of the "\u" escape at `at`; nothing when something else is there.
std::optional<char32_t> unitAt(std::string_view text, std::size_t at) {
    constexpr std::size_t length = 6;
    if (text.size() - at < length || text.substr(at, 2) != "\\u") {
        return std::nullopt;
    }
    std::uint16_t unit = 0;
    const char* end = text.data() + at + length;
    const auto [stop, error] = std::from_chars(text.data() + at + 2, end, unit, 16);
    return error == std::errc() && stop == end ? std::optional<char32_t>(unit) : std::nullopt;
}

} // namespace

std::string_view withoutByteOrderMark(std::string_view document) {
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    return document.starts_with(mark) ? document.substr(mark.size()) : document;
}

bool isNumber(std::string_view text) {
    std::size_t at = text.starts_with('-') ? 1 : 0;
    const bool startsWithZero = at < text.size() && text[at] == '0';
    const std::size_t start = at;
    if (!skipDigits(text, at) || (startsWithZero && at - start > 1)) {
        return false;
    }
    if (at < text.size() && text[at] == '.' && !skipDigits(text, ++at)) {
        return false;
    }
    if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
        ++at;
        if (at < text.size() && (text[at] == '+' || text[at] == '-')) {
            ++at;
        }
        if (!skipDigits(text, at)) {
            return false;
        }
    }
    return at == text.size();
}

std::optional<double> number(std::string_view text) {
    double value = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || stop != end || !std::isfinite(value)) {
        return std::nullopt;
    }
    return value;
}

std::optional<std::int64_t> integer(std::string_view text) {
    std::int64_t whole = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, whole);
    // Written as a whole number that is none of ours it is absent, however near the double lies.
    if (stop == end) {
        return error == std::errc() ? std::optional(whole) : std::nullopt;
    }
    // A fraction or an exponent: through the double, whose own range ends just below 2 to the 63rd.
    constexpr double limit = 9223372036854775808.0;
    const std::optional<double> value = number(text);
    if (!value || *value < -limit || *value >= limit) {
        return std::nullopt;
    }
    return static_cast<std::int64_t>(*value);
}

Escape escapeAt(std::string_view text, std::size_t at) {
    constexpr std::string_view meanings = "\"\\/\b\f\n\r\t";
    const std::size_t letter =
        at + 1 < text.size() ? escapeLetters.find(text[at + 1]) : std::string_view::npos;
    if (letter != std::string_view::npos) {
        return {2, static_cast<unsigned char>(meanings[letter])};
    }
    const std::optional<char32_t> unit = unitAt(text, at);
    if (!unit) {
        return {};
    }
    if (!isHighSurrogate(*unit) && !isLowSurrogate(*unit)) {
        return {6, *unit};
    }
    const std::optional<char32_t> second = isHighSurrogate(*unit) ? unitAt(text, at + 6) : std::nullopt;
    if (second && isLowSurrogate(*second)) {
        return {12, 0x10000 + ((*unit - 0xD800) << 10) + (*second - 0xDC00)};
    }
    return {6, replacement, false};
}

Unescaped unescape(std::string_view raw) {
    std::size_t backslash = raw.find('\\');
    Unescaped result{std::string(raw.substr(0, backslash))};
    while (backslash < raw.size()) {
        const Escape escape = escapeAt(raw, backslash);
        if (escape.length == 0) {
            break;
        }
        appendUtf8(result.text, escape.codePoint);
        result.isExact = result.isExact && escape.isExact;
        const std::size_t next = backslash + escape.length;
        backslash = raw.find('\\', next);
        result.text.append(raw.substr(next, backslash - next));
    }
    return result;
}

void appendUtf8(std::string& text, char32_t codePoint) {
    const auto continuation = [&](int shift) {
        text.push_back(static_cast<char>(0x80 | ((codePoint >> shift) & 0x3F)));
    };
    if (codePoint < 0x80) {
        text.push_back(static_cast<char>(codePoint));
    } else if (codePoint < 0x800) {
        text.push_back(static_cast<char>(0xC0 | (codePoint >> 6)));
        continuation(0);
    } else if (codePoint < 0x10000) {
        text.push_back(static_cast<char>(0xE0 | (codePoint >> 12)));
        continuation(6);
        continuation(0);
    } else {
        text.push_back(static_cast<char>(0xF0 | (codePoint >> 18)));
        continuation(12);
        continuation(6);
        continuation(0);
    }
}

} // namespace veslora::JsonText
