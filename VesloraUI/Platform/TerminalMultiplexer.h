// SPDX-License-Identifier: MIT
// The seam for programs that hold many terminals in one, such as tmux: what runs in them has no window above
// it, so the way to its terminal leads through them. Main thread only.
#pragma once

#include "VesloraUI/Platform/Task.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace veslora {

class TerminalMultiplexer {
  public:
    /// What `showPane` found: the process of the attached client, by which the user sees the pane.
    using Client = std::optional<std::int32_t>;

    /// What `findClients` found: the processes of all attached clients by which the user could see the pane.
    using Clients = std::vector<std::int32_t>;

    /// Seconds after which `findClients` waits no longer: an agent waits meanwhile.
    static constexpr double findLimit = 0.3;

    virtual ~TerminalMultiplexer() = default;

    /// Whether the process says that it runs in a multiplexer that can be asked. Starts nothing. A terminal
    /// that was opened from within a multiplexer, and everything in it, says so too: a window above the
    /// process counts first.
    [[nodiscard]] virtual bool mayHold(std::int32_t pid) const = 0;

    /// Tells which clients show the pane at this moment: it is the active one of their active window. Selects
    /// nothing. `pane` is as for `showPane`. `done` is called once, later and never within this call, with
    /// nothing where the process runs in no multiplexer, no client shows the pane, or no answer came within
    /// `findLimit`. Cancelling drops `done` only.
    [[nodiscard]] virtual Task findClients(std::int32_t pid, const std::optional<std::string>& pane,
                                           std::function<void(const Clients&)> done) = 0;

    /// Selects the pane that the process runs in, and its window, and tells which client shows it; of several
    /// the one used last. `pane` is its number, such as "%0"; absent to go by what the process itself knows.
    /// `done` is called once, later and never within this call, with nothing where the process runs in no
    /// multiplexer, no client is attached, or no answer comes in time. Cancelling drops `done` only.
    [[nodiscard]] virtual Task showPane(std::int32_t pid, const std::optional<std::string>& pane,
                                        std::function<void(Client)> done) = 0;
};

} // namespace veslora
