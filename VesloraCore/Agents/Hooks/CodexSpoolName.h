// SPDX-License-Identifier: MIT
// What the name of a file in Codex's spool tells: its kind, the process behind it, and the name of the answer
// that its script waits for. Plain values, any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace veslora {

struct CodexSpoolName {
    enum class Kind : std::uint8_t { event, permission };

    Kind kind = Kind::event;
    /// The hook's parent process, never below 1; absent where the script could not tell.
    std::optional<std::int32_t> pid;
    std::string id; ///< process and random part; names the answer
    bool operator==(const CodexSpoolName&) const = default;

    /// Reads "ev-123-aB3xYz.json" and "perm-123-aB3xYz.json". Nothing for a name of any other form, and for a
    /// process id beyond 32 bits.
    [[nodiscard]] static std::optional<CodexSpoolName> parse(std::string_view fileName);
};

} // namespace veslora
