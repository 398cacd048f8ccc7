// SPDX-License-Identifier: MIT
// See TmuxText.h.
#include "VesloraCore/Agents/TmuxText.h"

#include <algorithm>
#include <charconv>

namespace veslora::TmuxText {

namespace {

bool isNumber(std::string_view text) {
    constexpr std::size_t longest = 10;
    return !text.empty() && text.size() <= longest &&
           std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
}

// Cuts the text at its first `separator`; what follows is left in `text`.
std::string_view takeUntil(std::string_view& text, char separator) {
    const std::size_t end = std::min(text.find(separator), text.size());
    const std::string_view taken = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return taken;
}

template <class Number>
std::optional<Number> numberOf(std::string_view text) {
    Number value = 0;
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, value);
    return read.ec == std::errc() && read.ptr == end ? std::optional(value) : std::nullopt;
}

struct ListedClient {
    std::int64_t activity = 0;
    std::int32_t pid = 0;
};

// Those that show the pane.
std::vector<ListedClient> clientsOf(std::string_view pane, std::string_view listing) {
    std::vector<ListedClient> found;
    while (!listing.empty()) {
        std::string_view line = takeUntil(listing, '\n');
        const auto activity = numberOf<std::int64_t>(takeUntil(line, ' '));
        const auto pid = numberOf<std::int32_t>(takeUntil(line, ' '));
        if (activity && pid && *pid >= 1 && line == pane) {
            found.push_back({*activity, *pid});
        }
    }
    return found;
}

} // namespace

std::optional<std::string> paneOf(std::string_view place) {
    const std::size_t sign = place.rfind('%');
    if (sign == std::string_view::npos || !isNumber(place.substr(sign + 1)) ||
        (sign > 0 && place[sign - 1] != '.')) {
        return std::nullopt;
    }
    return std::string(place.substr(sign));
}

std::optional<std::string> socketOf(std::string_view variable) {
    // The path may hold commas itself; the server's process and the session's number follow it.
    for (int part = 0; part < 2; ++part) {
        const std::size_t comma = variable.rfind(',');
        if (comma == std::string_view::npos || !isNumber(variable.substr(comma + 1))) {
            return std::nullopt;
        }
        variable = variable.substr(0, comma);
    }
    return variable.starts_with('/') ? std::optional(std::string(variable)) : std::nullopt;
}

std::vector<std::int32_t> clientsShowing(std::string_view pane, std::string_view listing) {
    std::vector<std::int32_t> found;
    for (const ListedClient& client : clientsOf(pane, listing)) {
        found.push_back(client.pid);
    }
    return found;
}

std::optional<std::int32_t> clientShowing(std::string_view pane, std::string_view listing) {
    const std::vector<ListedClient> clients = clientsOf(pane, listing);
    const auto latest = std::ranges::max_element(
        clients, [](const ListedClient& a, const ListedClient& b) { return a.activity < b.activity; });
    return latest == clients.end() ? std::nullopt : std::optional(latest->pid);
}

} // namespace veslora::TmuxText
