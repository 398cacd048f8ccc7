// SPDX-License-Identifier: MIT
#include "VesloraCore/Agents/Usage/ClaudeUsageText.h"

#include <array>
#include <charconv>

namespace veslora::ClaudeUsageText {

namespace {

// Without zeros at its end.
std::string trimmed(double value, int decimals, const std::string& decimalPoint) {
    std::array<char, 32> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                      std::chars_format::fixed, decimals);
    std::string text(buffer.data(), result.ptr);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.ends_with('.')) {
        text.pop_back();
        return text;
    }
    const std::size_t point = text.find('.');
    return point == std::string::npos ? text : text.replace(point, 1, decimalPoint);
}

} // namespace

std::string tokens(std::int64_t count, const Words& words) {
    if (count < 1'000) {
        return std::to_string(count);
    }
    if (count < 1'000'000) {
        return Words::filled(words.translate("Usage", "%1K"), {std::to_string(count / 1'000)});
    }
    const double millions = static_cast<double>(count) / 1'000'000;
    return Words::filled(words.translate("Usage", "%1M"),
                         {trimmed(millions, count < 10'000'000 ? 2 : 1, words.decimalPoint())});
}

} // namespace veslora::ClaudeUsageText
