// SPDX-License-Identifier: MIT
#include "MediaAdapter/Artwork/FileUrl.h"

#include <charconv>

namespace veslora::FileUrl {
namespace {

/// The byte that two hexadecimal digits stand for; absent for anything else and for zero, which would end the
/// path.
std::optional<char> byteOf(std::string_view digits) {
    unsigned value = 0;
    const auto end = std::from_chars(digits.data(), digits.data() + digits.size(), value, 16).ptr;
    const bool isByte = digits.size() == 2 && end == digits.data() + digits.size();
    return isByte && value != 0 ? std::optional(static_cast<char>(value)) : std::nullopt;
}

std::optional<std::string> decoded(std::string_view text) {
    std::string bytes;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] != '%') {
            bytes += text[at];
            continue;
        }
        const std::optional<char> byte = byteOf(text.substr(at + 1, 2));
        if (!byte) {
            return std::nullopt;
        }
        bytes += *byte;
        at += 2;
    }
    return bytes;
}

bool dropPrefix(std::string_view& text, std::string_view prefix) {
    const bool hasPrefix = text.starts_with(prefix);
    text.remove_prefix(hasPrefix ? prefix.size() : 0);
    return hasPrefix;
}

} // namespace

std::optional<std::string> path(std::string_view url) {
    if (!dropPrefix(url, "file:")) {
        return std::nullopt;
    }
    if (dropPrefix(url, "//")) {
        dropPrefix(url, "localhost");
    }
    const bool isAbsolute = url.starts_with('/') && url.find('\0') == std::string_view::npos;
    return isAbsolute ? decoded(url) : std::nullopt;
}

} // namespace veslora::FileUrl
