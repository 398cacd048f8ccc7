// SPDX-License-Identifier: MIT
// Our hooks and status line in Claude Code's configuration: whether they are there, putting them in, taking
// them out. Main thread only.
#pragma once

#include "VesloraCore/Agents/Hooks/ClaudeStatusLineInstaller.h"
#include "VesloraUI/Claude/Hooks/AgentHooks.h"

#include <optional>
#include <string>
#include <string_view>

namespace veslora {

class ClaudeHooks final : public AgentHooks {
  public:
    /// `helpers` is where the program's own helper executables lie.
    ClaudeHooks(Files& files, SupportDirectory& support, std::string settingsFile, std::string helpers);

    void check() override;
    void install() override;
    bool remove() override;
    void updateScripts() override;

  private:
    [[nodiscard]] Found find(std::optional<std::string_view> text) const override;
    /// With those of earlier versions.
    [[nodiscard]] ClaudeHooksInstaller::Commands commands() const;
    /// The text with our hooks and our status line in it, and the status line that it had. Throws
    /// `InstallError`.
    [[nodiscard]] ClaudeStatusLineInstaller::Installed
    installing(const std::optional<std::string>& text) const;
    [[nodiscard]] bool holdsOurs(const std::optional<std::string>& text) const;
    void saveStatusLine(const std::optional<std::string>& previous, bool wasOurs) const;
    /// What `saveStatusLine` left; absent where there was none.
    [[nodiscard]] std::optional<std::string> savedStatusLine(const OpenedFolder& folder) const;
    void writeHelper() const;

    std::string m_helpers;
};

} // namespace veslora
