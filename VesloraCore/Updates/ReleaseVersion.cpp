// SPDX-License-Identifier: MIT
#include "VesloraCore/Updates/ReleaseVersion.h"

#include <algorithm>

namespace veslora {

namespace {

bool isDigit(char byte) {
    return byte >= '0' && byte <= '9';
}

bool isLetter(char byte) {
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
}

/// The number without zeros before it; none is empty.
std::string withoutZeros(std::string_view digits) {
    return std::string(digits.substr(std::min(digits.find_first_not_of('0'), digits.size())));
}

std::strong_ordering compareNumbers(std::string_view left, std::string_view right) {
    return left.size() == right.size() ? left <=> right : left.size() <=> right.size();
}

/// Digits are below letters.
std::strong_ordering compareRuns(const std::string& left, const std::string& right) {
    const bool isLeftWord = !left.empty() && isLetter(left.front());
    const bool isRightWord = !right.empty() && isLetter(right.front());
    if (isLeftWord != isRightWord) {
        return isLeftWord <=> isRightWord;
    }
    return isLeftWord ? left <=> right : compareNumbers(left, right);
}

/// Parts between dots; absent when one is empty.
std::optional<std::vector<std::string_view>> parts(std::string_view text) {
    std::vector<std::string_view> found;
    while (true) {
        const std::size_t dot = text.find('.');
        const std::string_view part = text.substr(0, dot);
        if (part.empty()) {
            return std::nullopt;
        }
        found.push_back(part);
        if (dot == std::string_view::npos) {
            return found;
        }
        text.remove_prefix(dot + 1);
    }
}

std::optional<std::vector<std::string>> numbersOf(std::string_view text) {
    const auto texts = parts(text);
    if (!texts) {
        return std::nullopt;
    }
    std::vector<std::string> numbers;
    for (const std::string_view each : *texts) {
        if (!std::ranges::all_of(each, isDigit)) {
            return std::nullopt;
        }
        numbers.push_back(withoutZeros(each));
    }
    while (!numbers.empty() && numbers.back().empty()) {
        numbers.pop_back();
    }
    return numbers;
}

std::optional<std::vector<std::string>> markOf(std::string_view text) {
    const auto texts = parts(text);
    if (!texts || !isLetter(text.front())) {
        return std::nullopt;
    }
    std::vector<std::string> runs;
    for (std::string_view rest : *texts) {
        while (!rest.empty()) {
            const auto belongs = isDigit(rest.front()) ? isDigit : isLetter;
            const auto length =
                static_cast<std::size_t>(std::ranges::find_if_not(rest, belongs) - rest.begin());
            if (length == 0) {
                return std::nullopt;
            }
            const std::string_view run = rest.substr(0, length);
            runs.push_back(isDigit(run.front()) ? withoutZeros(run) : std::string(run));
            rest.remove_prefix(length);
        }
    }
    return runs;
}

} // namespace

std::optional<ReleaseVersion> ReleaseVersion::parse(std::string_view text) {
    if (text.size() > longest) {
        return std::nullopt;
    }
    const std::size_t end = text.find_first_of("~-");
    const auto numbers = numbersOf(text.substr(0, end));
    const bool hasMark = end != std::string_view::npos;
    const auto mark = hasMark ? markOf(text.substr(end + 1)) : std::vector<std::string>();
    if (!numbers || !mark) {
        return std::nullopt;
    }
    ReleaseVersion version;
    version.m_text = text;
    version.m_numbers = *numbers;
    version.m_mark = *mark;
    return version;
}

std::strong_ordering ReleaseVersion::operator<=>(const ReleaseVersion& other) const {
    const auto byNumbers = std::lexicographical_compare_three_way(
        m_numbers.begin(), m_numbers.end(), other.m_numbers.begin(), other.m_numbers.end(), compareNumbers);
    if (std::is_neq(byNumbers)) {
        return byNumbers;
    }
    if (m_mark.empty() || other.m_mark.empty()) {
        return m_mark.empty() <=> other.m_mark.empty();
    }
    return std::lexicographical_compare_three_way(m_mark.begin(), m_mark.end(), other.m_mark.begin(),
                                                  other.m_mark.end(), compareRuns);
}

} // namespace veslora
