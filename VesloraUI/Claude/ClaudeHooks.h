// SPDX-License-Identifier: MIT
// Our hooks and status line in Claude Code's configuration: whether they are there, putting them in, taking
// them out. Main thread only.
#pragma once

#include "VesloraCore/ClaudeHooksInstaller.h"
#include "VesloraUI/Claude/ConfigurationFile.h"
#include "VesloraUI/Claude/HookScriptFiles.h"

#include <optional>
#include <string>

namespace veslora {

class SupportDirectory;

class ClaudeHooks {
  public:
    struct State {
        bool areInstalled = false;
        bool areOutdated = false; ///< some of it is there, not all
    };

    /// `helpers` is where the program's own helper executables lie.
    ClaudeHooks(Files& files, SupportDirectory& support, std::string settingsFile, std::string helpers);

    /// Asks the file system, but reads the settings only after they changed.
    [[nodiscard]] State state();

    /// Throws `InstallError` or `std::system_error`.
    void install();
    /// False when there was no configuration to take anything out of.
    bool remove();

    /// Writes the scripts anew where an older version of the program has left others. Does nothing where none
    /// are.
    void updateScripts();

  private:
    [[nodiscard]] ClaudeHooksInstaller::Commands commands() const;
    void saveStatusLine(const std::optional<std::string>& previous, bool wasOurs) const;
    void writeHelper() const;
    void readSettings();

    Files& m_files;
    SupportDirectory& m_support;
    HookScriptFiles m_scripts;
    std::string m_settingsFile;
    std::string m_helpers;

    std::optional<FileStat> m_settingsStat;
    bool m_lineInstalled = false;
    bool m_hooksIn = false;
    bool m_hooksPartlyIn = false;
};

} // namespace veslora
