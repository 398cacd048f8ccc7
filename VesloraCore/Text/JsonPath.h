// SPDX-License-Identifier: MIT
// Finds one value in a JSON document without building the rest. The scripts' helper, which starts several
// times for each line an agent draws, is this and little else: so nothing here may need a library. Any
// thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace veslora::JsonPath {

/// The string, the number in its own text, or "true" or "false" at a path of keys joined by dots; of equal
/// keys the last counts. Nothing where the path leads nowhere or to another kind of value, and for a document
/// that `JsonScanner` refuses. Whether the document is valid UTF-8 is not checked.
[[nodiscard]] std::optional<std::string> valueAt(std::string_view document, std::string_view path);

} // namespace veslora::JsonPath
