// SPDX-License-Identifier: MIT
// Reads what tmux and the programs in it say of panes and clients. Other programs wrote it, so nothing but
// numbers gets through to where a command is made of it. Pure functions, any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace veslora::TmuxText {

/// The form in which tmux's clients are read here: one a line, when it was last used, its process, and the
/// active pane of its active window.
inline constexpr std::string_view clientFormat = "#{client_activity} #{client_pid} #{pane_id}";

/// The pane at the end of a place such as "main:@0.%0": "%0". A pane by itself is a place too. Nothing for
/// text that does not end in a pane's number.
[[nodiscard]] std::optional<std::string> paneOf(std::string_view place);

/// The server's socket in the value of the variable TMUX: "/tmp/tmux-1000/default" of
/// "/tmp/tmux-1000/default,2757,0". Nothing for text of another form and for a path that is not absolute.
[[nodiscard]] std::optional<std::string> socketOf(std::string_view variable);

/// The processes of all clients that show a pane. A client that may only watch counts too, since its user
/// sees the pane all the same. Lines that can't be read are passed over.
[[nodiscard]] std::vector<std::int32_t> clientsShowing(std::string_view pane, std::string_view listing);

/// Of the clients that show a pane, the one used last.
[[nodiscard]] std::optional<std::int32_t> clientShowing(std::string_view pane, std::string_view listing);

} // namespace veslora::TmuxText
