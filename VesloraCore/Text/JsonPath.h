// SPDX-License-Identifier: MIT
// Finds one value in a JSON document without building the rest. It serves the status-line helper, which
// starts several times for each line an agent draws and lies alone beside the scripts: so it must not need
// the JSON library that `Json` stands on. Any thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace veslora::JsonPath {

/// The string, the number in its own text, or "true" or "false" at a path of keys joined by dots; of equal
/// keys the last counts. Nothing where the path leads nowhere or to another kind of value, and for a document
/// that breaks JSON's grammar or nests deeper than `Json` reads. Whether the document is UTF-8 is not looked
/// at.
[[nodiscard]] std::optional<std::string> valueAt(std::string_view document, std::string_view path);

} // namespace veslora::JsonPath
