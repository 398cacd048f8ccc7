// SPDX-License-Identifier: MIT
// See Scripts.h.
#include "VesloraCore/Text/Scripts.h"

#include "VesloraCore/Text/ScriptTable.h"

#include <algorithm>

namespace veslora::Scripts {

namespace {

constexpr int scriptBits = 8;
constexpr std::uint32_t scriptMask = (1U << scriptBits) - 1;

} // namespace

Script of(char32_t codePoint) {
    constexpr char32_t last = 0x10FFFF;
    if (codePoint > last) {
        return Script::unknown;
    }
    const std::uint32_t highestOfRun = static_cast<std::uint32_t>(codePoint) << scriptBits | scriptMask;
    return static_cast<Script>(*std::prev(std::ranges::upper_bound(table, highestOfRun)) & scriptMask);
}

} // namespace veslora::Scripts
