// SPDX-License-Identifier: MIT
// What /proc tells about a process: its state and its parent. Usable from any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace veslora {

struct ProcessStat {
    char state = 0; ///< a letter as in proc(5): 'Z' has ended and waits to be collected
    std::int32_t parent = 0;
    bool operator==(const ProcessStat&) const = default;
};

namespace ProcessTree {

/// Reads the text of a /proc/<pid>/stat file. The program's name in it may hold anything, spaces, brackets
/// and line breaks included; it ends at the last closing bracket. Absent when the text is not of that form.
[[nodiscard]] std::optional<ProcessStat> parse(std::string_view stat);

/// Absent when there is no such process or it can't be asked.
[[nodiscard]] std::optional<ProcessStat> statOf(std::int32_t pid);

} // namespace ProcessTree
} // namespace veslora
