// SPDX-License-Identifier: MIT
// Whether the user looks at the terminal that a session runs in. The agent's own prompt is then the better
// one, so the island does not ask. Main thread only.
#pragma once

#include "VesloraUI/Platform/HostApplications.h"
#include "VesloraUI/Platform/Task.h"
#include "VesloraUI/Platform/TerminalMultiplexer.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace veslora {

/// Where a session runs, as far as it is known.
struct SessionPlace {
    std::vector<std::int32_t> processes; ///< the one it runs in is among them; empty where nothing is known
    std::optional<std::string> pane;     ///< the multiplexer's pane that it names
};

class FrontTerminal {
  public:
    /// What can be told at once.
    struct Look {
        bool isInFront = false;
        /// Processes without a window above them that may run in a multiplexer: it has to be asked.
        std::vector<std::int32_t> multiplexed;
    };

    FrontTerminal(HostApplications& hosts, TerminalMultiplexer& multiplexer)
        : m_hosts(hosts), m_multiplexer(multiplexer) {}

    /// In front is a session one of whose processes is.
    [[nodiscard]] Look look(const SessionPlace& place) const;

    /// Asks the multiplexers of those processes. `done` is called once, later and never within this call,
    /// with whether a client is in front that shows the pane of one of them. This object must live until
    /// then.
    [[nodiscard]] Task ask(const std::vector<std::int32_t>& multiplexed,
                           const std::optional<std::string>& pane, std::function<void(bool)> done);

  private:
    HostApplications& m_hosts;
    TerminalMultiplexer& m_multiplexer;
};

} // namespace veslora
