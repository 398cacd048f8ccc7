// SPDX-License-Identifier: MIT
// See ToolUse.h.
#include "VesloraCore/Agents/Hooks/ToolUse.h"

#include <cstdint>
#include <string_view>

namespace veslora {

namespace {

constexpr std::size_t longestInput = 1024;

// FNV-1a, 64 bits (Fowler, Noll, Vo). It need not withstand an attacker: an equal hash only closes an alert.
std::uint64_t hashOf(std::string_view text) {
    std::uint64_t hash = 0xcbf29ce484222325;
    for (const char byte : text) {
        hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001b3;
    }
    return hash;
}

} // namespace

std::string ToolUse::inputText(const Json& input) {
    std::string text = input.print(Json::Layout::compact);
    if (text.size() <= longestInput) {
        return text;
    }
    return std::to_string(text.size()) + " bytes, hash " + std::to_string(hashOf(text));
}

ToolUse ToolUse::of(const HookPayload& payload) {
    const std::optional<Json> input = payload.input();
    return {payload.tool, input ? inputText(*input) : std::string()};
}

} // namespace veslora
