// SPDX-License-Identifier: MIT
// See ToolUse.h.
#include "VesloraCore/ToolUse.h"

#include <cstdint>

namespace veslora {

namespace {

constexpr std::size_t longestInput = 1024;

// FNV-1a, 64 bits (Fowler, Noll, Vo). It need not withstand an attacker: an equal hash only closes an alert.
std::uint64_t hashOf(std::string_view text) {
    std::uint64_t hash = 0xcbf29ce484222325;
    for (const char byte : text)
        hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001b3;
    return hash;
}

} // namespace

std::string ToolUse::inputText(const Json& input) {
    std::string text = input.print(Json::Layout::compact);
    if (text.size() <= longestInput)
        return text;
    return std::to_string(text.size()) + " bytes, hash " + std::to_string(hashOf(text));
}

const Json& ToolUse::inputOf(const Json& payload) {
    static const Json empty = Json::makeObject();
    const Json* input = payload.objectAt("tool_input");
    return input ? *input : empty;
}

ToolUse ToolUse::of(const Json& payload) {
    return {payload.textAt("tool_name"), inputText(inputOf(payload))};
}

} // namespace veslora
