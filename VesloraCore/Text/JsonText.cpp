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

std::optional<char32_t> hexadecimal(std::string_view digits) {
    if (digits.size() != 4) {
        return std::nullopt;
    }
    char32_t value = 0;
    for (const char byte : digits) {
        const char lower = static_cast<char>(byte | 0x20);
        if (isDigit(byte)) {
            value = value * 16 + static_cast<char32_t>(byte - '0');
        } else if (lower >= 'a' && lower <= 'f') {
            value = value * 16 + static_cast<char32_t>(lower - 'a' + 10);
        } else {
            return std::nullopt;
        }
    }
    return value;
}

// The code unit of the escape at `at`, where "\u" must stand; nothing when something else does.
std::optional<char32_t> unitAt(std::string_view raw, std::size_t at) {
    if (at > raw.size() || raw.substr(at, 2) != "\\u") {
        return std::nullopt;
    }
    return hexadecimal(raw.substr(at + 2, 4));
}

// Resolves the "\u" escape at `at` and steps over it, and over its second half if it has one.
bool appendUnicodeEscape(std::string_view raw, std::size_t& at, Unescaped& result) {
    const std::optional<char32_t> unit = unitAt(raw, at);
    if (!unit) {
        return false;
    }
    at += 6;
    if (!isHighSurrogate(*unit) && !isLowSurrogate(*unit)) {
        appendUtf8(result.text, *unit);
        return true;
    }
    const std::optional<char32_t> second = isHighSurrogate(*unit) ? unitAt(raw, at) : std::nullopt;
    if (second && isLowSurrogate(*second)) {
        at += 6;
        appendUtf8(result.text, 0x10000 + ((*unit - 0xD800) << 10) + (*second - 0xDC00));
    } else {
        result.isExact = false;
        appendUtf8(result.text, replacement);
    }
    return true;
}

std::optional<char> simpleEscape(char letter) {
    switch (letter) {
    case '"':
    case '\\':
    case '/':
        return letter;
    case 'b':
        return '\b';
    case 'f':
        return '\f';
    case 'n':
        return '\n';
    case 'r':
        return '\r';
    case 't':
        return '\t';
    default:
        return std::nullopt;
    }
}

// Resolves the escape at `at`, where a backslash stands, and steps over it.
bool appendEscape(std::string_view raw, std::size_t& at, Unescaped& result) {
    if (at + 1 >= raw.size()) {
        return false;
    }
    if (raw[at + 1] == 'u') {
        return appendUnicodeEscape(raw, at, result);
    }
    const std::optional<char> byte = simpleEscape(raw[at + 1]);
    if (!byte) {
        return false;
    }
    result.text.push_back(*byte);
    at += 2;
    return true;
}

} // namespace

std::string_view withoutByteOrderMark(std::string_view document) {
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    return document.starts_with(mark) ? document.substr(mark.size()) : document;
}

bool isBlank(char byte) {
    return byte == ' ' || byte == '\t' || byte == '\n' || byte == '\r';
}

std::string_view withoutTrailingBlanks(std::string_view text) {
    while (!text.empty() && isBlank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
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

std::size_t escapeLength(std::string_view text, std::size_t at) {
    if (at + 1 >= text.size()) {
        return 0;
    }
    if (text[at + 1] == 'u') {
        return unitAt(text, at) ? 6 : 0;
    }
    return simpleEscape(text[at + 1]) ? 2 : 0;
}

std::size_t closingQuote(std::string_view document, std::size_t start) {
    for (std::size_t at = start; at < document.size(); ++at) {
        if (document[at] == '"') {
            return at;
        }
        if (document[at] == '\\') {
            ++at;
        }
    }
    return std::string_view::npos;
}

std::optional<Unescaped> unescape(std::string_view raw) {
    Unescaped result;
    result.text.reserve(raw.size());
    for (std::size_t at = 0; at < raw.size();) {
        if (raw[at] == '\\') {
            if (!appendEscape(raw, at, result)) {
                return std::nullopt;
            }
            continue;
        }
        if (static_cast<unsigned char>(raw[at]) < 0x20) {
            return std::nullopt;
        }
        result.text.push_back(raw[at++]);
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
