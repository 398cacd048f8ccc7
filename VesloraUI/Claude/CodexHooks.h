// SPDX-License-Identifier: MIT
// Our hooks in Codex's configuration: whether they are there, putting them in, taking them out. Codex runs a
// hook only after the user has trusted it, and remembers that by the hook's place in the file: so ours come
// last, and what the user has keeps its place. Main thread only.
#pragma once

#include "VesloraCore/ClaudeHooksInstaller.h"
#include "VesloraUI/Claude/HookScriptFiles.h"

#include <optional>
#include <string>

namespace veslora {

class CodexHooks {
  public:
    struct State {
        bool areInstalled = false;
        bool areOutdated = false; ///< some of it is there, not all
    };

    CodexHooks(Files& files, SupportDirectory& support, std::string hooksFile);

    /// Asks the file system, but reads the configuration only after it changed.
    [[nodiscard]] State state();

    /// Throws `InstallError` or `std::system_error`.
    void install();
    /// False when there was no configuration to take anything out of. A file that held our hooks alone is
    /// deleted. Throws as `install` does.
    bool remove();

    /// Writes the scripts anew where an older version of the program has left others. Does nothing where none
    /// are.
    void updateScripts() { m_scripts.update(); }

  private:
    [[nodiscard]] ClaudeHooksInstaller::Commands commands() const;
    void readHooks();

    Files& m_files;
    SupportDirectory& m_support;
    HookScriptFiles m_scripts;
    std::string m_hooksFile;

    bool m_isRead = false; ///< what follows is what the file says
    std::optional<FileStat> m_hooksStat;
    bool m_hooksIn = false;
    bool m_hooksPartlyIn = false;
};

} // namespace veslora
