// SPDX-License-Identifier: MIT
// Our hooks in the configuration of one agent: whether they are there, putting them in, taking them out. What
// an agent's configuration must hold is for each agent's own class to know. Main thread only.
#pragma once

#include "VesloraCore/Agents/Hooks/AgentHookNames.h"
#include "VesloraCore/Agents/Hooks/ClaudeHooksInstaller.h"
#include "VesloraUI/Claude/Hooks/AgentHooksState.h"
#include "VesloraUI/Claude/Hooks/HookScriptFiles.h"
#include "VesloraUI/Platform/Files.h"
#include "VesloraUI/Platform/Trouble.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace veslora {

class ConfigurationFile;
class SupportDirectory;

class AgentHooks {
  public:
    virtual ~AgentHooks() = default;

    /// Asks the file system, but reads the configuration only after it changed.
    [[nodiscard]] AgentHooksState state();

    /// Throws what `install` would for the configuration as it is; changes nothing.
    virtual void check() = 0;
    /// Throws `InstallError` or `FileError`; then the configuration is as it was.
    virtual void install() = 0;
    /// False when there was no configuration to take anything out of. Throws as `install` does.
    virtual bool remove() = 0;
    /// Writes the scripts again where an older version of the program has left others. Does nothing where
    /// none are.
    virtual void updateScripts() { m_scripts.update(); }

  protected:
    /// What a configuration holds of ours.
    struct Found {
        bool all = false;
        bool any = false;
    };

    /// `names` must outlive this. `moreScripts` are what the agent runs beside its event and its permission
    /// script.
    AgentHooks(Files& files, SupportDirectory& support, std::string configuration,
               const AgentHookNames& names, const std::vector<std::string_view>& moreScripts = {});

    /// Those of the event and the permission script, as they stand in the configuration.
    [[nodiscard]] ClaudeHooksInstaller::Commands commands() const;

    /// Writes a configuration with our hooks in it. A file of the user's that had nothing of ours is backed
    /// up first; at any other time the backup would be of our own version.
    void putIn(ConfigurationFile& file, const std::string& text, bool hadOurs);
    /// Writes one without them; a file that had none keeps its every byte. One that we made and that holds
    /// nothing any more is deleted.
    void takeOut(ConfigurationFile& file, const std::string& text, bool hadOurs);

    /// `text` is the configuration's; absent where there is none that can be read.
    [[nodiscard]] virtual Found find(std::optional<std::string_view> text) const = 0;

    /// Takes in a configuration that was read again.
    virtual void noteConfiguration(std::optional<std::string_view> /*text*/) {}
    /// Whether the agent may run the hooks that the configuration holds.
    [[nodiscard]] virtual bool areTrusted() { return true; }

    /// Lets the next `state` read the configuration, whatever its stat tells.
    void forgetConfiguration() { m_isRead = false; }

    Files& m_files;
    SupportDirectory& m_support;
    HookScriptFiles m_scripts;
    std::string m_configuration; ///< path of the agent's file

  private:
    void readConfiguration();
    void setMarker(const std::optional<std::string>& madeFile) const;
    [[nodiscard]] bool haveMade(const std::string& path) const;

    const AgentHookNames& m_names;

    bool m_isRead = false; ///< what follows is what the file says
    std::optional<FileStat> m_stat;
    Found m_found;
    Trouble m_trouble; ///< of reading the configuration
};

} // namespace veslora
