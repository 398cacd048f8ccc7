// SPDX-License-Identifier: MIT
#include "VesloraCore/Agents/Usage/ClaudeUsageText.h"

#include <array>
#include <charconv>

namespace veslora::ClaudeUsageText {

namespace {

// With a point whatever the locale, and without zeros at its end.
std::string trimmed(double value, int decimals) {
    std::array<char, 32> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                      std::chars_format::fixed, decimals);
    std::string text(buffer.data(), result.ptr);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.ends_with('.')) {
        text.pop_back();
    }
    return text;
}

} // namespace

std::string tokens(std::int64_t count) {
    if (count < 1'000) {
        return std::to_string(count);
    }
    if (count < 1'000'000) {
        return std::to_string(count / 1'000) + "K";
    }
    return trimmed(static_cast<double>(count) / 1'000'000, count < 10'000'000 ? 2 : 1) + "M";
}

} // namespace veslora::ClaudeUsageText
