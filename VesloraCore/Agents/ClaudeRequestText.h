// SPDX-License-Identifier: MIT
// The text of a permission prompt: what the agent wants to do, whole, and how it is shown so that nothing in
// it can hide. Pure functions for both agents, any thread.
#pragma once

#include "VesloraCore/Text/Json.h"
#include "VesloraCore/Text/VisibleText.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace veslora::ClaudeRequestText {

/// The most characters, as a person counts them, that an alert can show.
inline constexpr std::size_t displayLimit = 130;

/// What a tool is asked to do with `input`. Paths below `home` start with "~"; an empty `home` shortens
/// nothing.
[[nodiscard]] std::string describe(std::string_view tool, const Json& input, std::string_view home);

/// What an alert shows of the text: all of it, with everything in it visible, or its first 129 characters and
/// "…". Takes no longer for a text of any length.
[[nodiscard]] VisibleText::Spelled display(std::string_view text);

} // namespace veslora::ClaudeRequestText
