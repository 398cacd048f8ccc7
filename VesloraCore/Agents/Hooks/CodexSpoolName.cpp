// SPDX-License-Identifier: MIT
// See CodexSpoolName.h.
#include "VesloraCore/Agents/Hooks/CodexSpoolName.h"

#include "VesloraCore/Text/IdentifierText.h"

#include <charconv>

namespace veslora {

namespace {

constexpr std::string_view suffix = ".json";
constexpr std::string_view eventPrefix = "ev-";
constexpr std::string_view permissionPrefix = "perm-";

// All of the text as a decimal number without a sign.
std::optional<std::int32_t> processId(std::string_view text) {
    std::int32_t value = 0;
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, value);
    return read.ec == std::errc() && read.ptr == end && value >= 0 ? std::optional(value) : std::nullopt;
}

} // namespace

std::optional<CodexSpoolName> CodexSpoolName::parse(std::string_view fileName) {
    if (!fileName.ends_with(suffix)) {
        return std::nullopt;
    }
    fileName.remove_suffix(suffix.size());
    const bool isEvent = fileName.starts_with(eventPrefix);
    if (!isEvent && !fileName.starts_with(permissionPrefix)) {
        return std::nullopt;
    }
    const std::string_view id = fileName.substr(isEvent ? eventPrefix.size() : permissionPrefix.size());
    const std::size_t start = id.find_first_not_of('-');
    const std::size_t dash = id.find('-', start);
    if (start == std::string_view::npos || dash == std::string_view::npos) {
        return std::nullopt;
    }
    const auto pid = processId(id.substr(start, dash - start));
    if (!pid || !IdentifierText::isPlain(id.substr(dash + 1))) {
        return std::nullopt;
    }
    return CodexSpoolName{isEvent ? Kind::event : Kind::permission, *pid > 0 ? pid : std::nullopt,
                          std::string(id)};
}

} // namespace veslora
