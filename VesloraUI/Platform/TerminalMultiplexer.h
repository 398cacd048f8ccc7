// SPDX-License-Identifier: MIT
// The seam for programs that hold many terminals in one, such as tmux: what runs in them has no window above
// it, so the way to its terminal leads through them. Main thread only.
#pragma once

#include "VesloraUI/Platform/Task.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace veslora {

class TerminalMultiplexer {
  public:
    /// What `showPane` found: the process of the attached client, by which the user sees the pane.
    using Client = std::optional<std::int32_t>;

    virtual ~TerminalMultiplexer() = default;

    /// Selects the pane that the process runs in, and its window, and tells which client shows it; of several
    /// the one used last. `pane` is its number, such as "%0"; absent to go by what the process itself knows.
    /// `done` is called once, later and never within this call, with nothing where the process runs in no
    /// multiplexer, no client is attached, or no answer comes in time. Cancelling drops `done` only.
    [[nodiscard]] virtual Task showPane(std::int32_t pid, const std::optional<std::string>& pane,
                                        std::function<void(Client)> done) = 0;
};

} // namespace veslora
