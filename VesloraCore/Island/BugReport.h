// SPDX-License-Identifier: MIT
// What a report of a fault needs to know of the machine and of the program on it, as text that its reader can
// copy into a public place: nothing of it names a person, a folder, a session or a project. Plain values.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace veslora {

struct BugReport {
    struct Screen {
        std::string name; ///< the connector's, as in "eDP-1"
        int width = 0;    ///< points
        int height = 0;   ///< points
        double scale = 1; ///< native pixels of one point
        bool isBuiltIn = false;
        bool hasNotch = false;
    };
    struct Display {
        std::string windowManager; ///< as it calls itself; empty where none tells
        bool isComposited = false;
        bool isBelowWayland = false;
        std::vector<Screen> screens;
    };
    struct Service {
        std::string name; ///< of the bus
        bool isThere = false;
    };
    struct Agent {
        std::string name;
        bool hasHooks = false;
        bool areHooksOutdated = false;
        std::optional<std::string> version; ///< absent where no file of the agent tells it
    };

    std::string version;                          ///< the program's
    std::string toolkit;                          ///< its version
    std::string system;                           ///< distribution and kernel
    std::string session;                          ///< as XDG_SESSION_TYPE tells it
    std::string desktop;                          ///< as XDG_CURRENT_DESKTOP tells it
    std::optional<Display> display;               ///< absent where none can be reached
    std::optional<std::vector<Service>> services; ///< absent without a session bus
    std::vector<Agent> agents;
    std::optional<std::string> running; ///< the status line of the one that runs
};

/// One line for each fact, as in "screen: eDP-1 1440x900 at 2, built in". What comes from outside is shown on
/// its line, without what can't be seen, and cut if it is long.
[[nodiscard]] std::string text(const BugReport& report);

} // namespace veslora
