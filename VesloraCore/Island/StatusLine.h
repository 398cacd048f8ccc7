// SPDX-License-Identifier: MIT
// The state of the program in one line of JSON, for scripts and status bars. It holds counts and fixed words
// alone: no name, folder or text of a session, since the terminal that prints it may be recorded.
#pragma once

#include "VesloraCore/Agents/ClaudeSessionStatus.h"
#include "VesloraCore/Island/LiveActivity.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace veslora::StatusLine {

/// `closedActivity` is what the island shows while it is closed, and `pausedUntil` until when the
/// user has paused alerts. The line has no end. Its form is told to
/// users by `CommandLine::explanation`.
[[nodiscard]] std::string make(bool isOpen, LiveActivityKind closedActivity,
                               const std::vector<ClaudeSessionSummary>& sessions,
                               std::optional<Timestamp> pausedUntil = std::nullopt);

/// Whether a text that another process gave is such a line. One that is can be printed as it is: it holds
/// nothing but visible ASCII, and not much.
[[nodiscard]] bool isOne(std::string_view text);

} // namespace veslora::StatusLine
