// SPDX-License-Identifier: MIT
// Reads and writes the text of an agent's own configuration file. Both installers use it: what they do
// not understand wholly, they do not touch. Pure functions, any thread.
#pragma once

#include "VesloraCore/Agents/Hooks/InstallError.h"
#include "VesloraCore/Text/Json.h"

#include <optional>
#include <string>
#include <string_view>

namespace veslora::ConfigurationText {

/// The object that a file holds; an empty one for no file and for blank text. Nothing when the text is no
/// JSON object, or when writing it again could not give back all of it (equal keys, half a surrogate pair).
[[nodiscard]] std::optional<Json> parse(std::optional<std::string_view> text);

/// The same, but where it gives nothing it throws ClaudeHooksInstaller::InstallError.
[[nodiscard]] Json parseOrThrow(std::optional<std::string_view> text);

/// The text to write: two blanks a level, keys sorted, one newline at the end.
[[nodiscard]] std::string render(const Json& object);

} // namespace veslora::ConfigurationText
