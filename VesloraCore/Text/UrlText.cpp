// SPDX-License-Identifier: MIT
// See UrlText.h.
#include "VesloraCore/Text/UrlText.h"

#include <algorithm>
#include <string>

namespace veslora::UrlText {

namespace {

bool isLetter(char byte) {
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
}

bool isDigit(char byte) {
    return byte >= '0' && byte <= '9';
}

bool isScheme(std::string_view text) {
    const auto fits = [](char byte) {
        return isLetter(byte) || isDigit(byte) || byte == '+' || byte == '-' || byte == '.';
    };
    return !text.empty() && isLetter(text.front()) && std::ranges::all_of(text, fits);
}

// Blanks, control characters and the marks that no address may hold unescaped.
bool isForbidden(char byte) {
    return static_cast<unsigned char>(byte) <= 0x20 || byte == 0x7F ||
           std::string_view("\"<>\\^`{|}").find(byte) != std::string_view::npos;
}

bool isPort(std::string_view text) {
    return std::ranges::all_of(text, isDigit);
}

// Splits "[::1]:80" and "example.com:80"; empty where what follows the host is no port.
std::string_view withoutPort(std::string_view authority) {
    const bool isBracketed = authority.starts_with('[');
    const std::size_t end = authority.find(isBracketed ? ']' : ':');
    if (isBracketed) {
        if (end == std::string_view::npos) {
            return {};
        }
        const std::string_view rest = authority.substr(end + 1);
        const bool isGood = rest.empty() || (rest.front() == ':' && isPort(rest.substr(1)));
        return isGood ? authority.substr(1, end - 1) : std::string_view();
    }
    const bool isGood = end == std::string_view::npos || isPort(authority.substr(end + 1));
    return isGood ? authority.substr(0, end) : std::string_view();
}

} // namespace

std::string_view host(std::string_view url) {
    const std::size_t colon = url.find("://");
    if (colon == std::string_view::npos || !isScheme(url.substr(0, colon)) ||
        std::ranges::any_of(url, isForbidden)) {
        return {};
    }
    std::string_view authority = url.substr(colon + 3);
    authority = authority.substr(0, authority.find_first_of("/?#"));
    const std::size_t user = authority.rfind('@');
    return withoutPort(user == std::string_view::npos ? authority : authority.substr(user + 1));
}

} // namespace veslora::UrlText
