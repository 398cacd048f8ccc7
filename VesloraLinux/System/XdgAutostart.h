// SPDX-License-Identifier: MIT
// The login item as a desktop entry in the user's autostart folder, by the Autostart rules of
// freedesktop.org: a user's entry hides that of the same name which the system may have. Main thread only.
#pragma once

#include "VesloraUI/Platform/LoginItem.h"

#include <optional>
#include <string>
#include <vector>

namespace veslora {

class Files;

class XdgAutostart final : public LoginItem {
  public:
    struct Surroundings {
        std::string configuration;            ///< $XDG_CONFIG_HOME
        std::vector<std::string> systemWide;  ///< $XDG_CONFIG_DIRS, the most important first
        std::vector<std::string> desktops;    ///< $XDG_CURRENT_DESKTOP
        std::vector<std::string> executables; ///< $PATH
        std::string executable;               ///< the program's own absolute path
    };

    XdgAutostart(Files& files, Surroundings surroundings);

    /// An entry that is there but starts nothing counts as off: disabled by a desktop's own tool, meant for
    /// another desktop, broken, or of a program that is gone.
    [[nodiscard]] bool isEnabled() override;
    /// What the user or a tool wrote into the entry beside that stays.
    std::error_code enable() override;
    /// Removes an entry that this wrote, and hides any other.
    std::error_code disable() override;
    [[nodiscard]] std::string place() const override;

  private:
    [[nodiscard]] std::optional<std::string> systemsEntry() const;
    [[nodiscard]] bool starts(const std::string& entry) const;
    /// The path by which a shell finds the program, where it does: a package may put another file behind it.
    [[nodiscard]] std::string program() const;
    std::error_code put(const std::optional<std::string>& before, const std::string& entry);

    Files& m_files;
    Surroundings m_surroundings;
};

} // namespace veslora
