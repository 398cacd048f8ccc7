// SPDX-License-Identifier: MIT
// The text of a permission prompt: what the agent wants to do, whole, and how it is shown so that nothing in
// it can hide. Pure functions for both agents, any thread.
#pragma once

#include "VesloraCore/Json.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace veslora::ClaudeRequestText {

/// The most characters, as a person counts them, that an alert can show.
inline constexpr std::size_t displayLimit = 130;

struct Display {
    std::string text;       ///< everything, never cut
    bool isComplete = true; ///< whether all of it fits the alert
    bool operator==(const Display&) const = default;
};

/// What a tool is asked to do with `input`. Paths below `home` start with "~"; an empty `home` shortens
/// nothing.
[[nodiscard]] std::string describe(std::string_view tool, const Json& input, std::string_view home);

/// The text with line ends and tabs as signs, and every code point that can't be seen or that turns the
/// direction of others around spelled out, such as "⟨U+202E⟩".
[[nodiscard]] Display display(std::string_view text);

} // namespace veslora::ClaudeRequestText
