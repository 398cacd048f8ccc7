// SPDX-License-Identifier: MIT
// Our hooks in the configuration of one agent: whether they are there, putting them in, taking them out. What
// an agent's configuration must hold is for each agent's own class to know. Main thread only.
#pragma once

#include "VesloraUI/Claude/Hooks/HookScriptFiles.h"
#include "VesloraUI/Platform/Files.h"
#include "VesloraUI/Platform/Trouble.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace veslora {

class ConfigurationFile;
class SupportDirectory;

class AgentHooks {
  public:
    struct State {
        bool areInstalled = false;
        bool areOutdated = false; ///< some of it is there, not all
    };

    virtual ~AgentHooks() = default;

    /// Asks the file system, but reads the configuration only after it changed.
    [[nodiscard]] State state();

    /// Throws `InstallError` or `FileError`; then the configuration is as it was.
    virtual void install() = 0;
    /// False when there was no configuration to take anything out of. Throws as `install` does.
    virtual bool remove() = 0;
    /// Writes the scripts anew where an older version of the program has left others. Does nothing where none
    /// are.
    virtual void updateScripts() { m_scripts.update(); }

  protected:
    /// What a configuration holds of ours.
    struct Found {
        bool all = false;
        bool any = false;
    };

    /// The names of the agent's files in the support directory; they must outlive this.
    struct Names {
        std::span<const std::string_view> scripts; ///< of HookScripts
        std::string_view madeMarker; ///< says that the configuration is a file which we made, not the user
    };

    AgentHooks(Files& files, SupportDirectory& support, std::string configuration, Names names);

    /// Writes a configuration with our hooks in it. A file of the user's that had nothing of ours is backed
    /// up first; at any other time the backup would be of our own version.
    void putIn(ConfigurationFile& file, const std::string& text, bool hadOurs);
    /// Writes one without them; a file that had none keeps its every byte. One that we made and that holds
    /// nothing any more is deleted.
    void takeOut(ConfigurationFile& file, const std::string& text, bool hadOurs);

    /// `text` is the configuration's; absent where there is none that can be read.
    [[nodiscard]] virtual Found find(std::optional<std::string_view> text) const = 0;

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

    std::string m_marker;

    bool m_isRead = false; ///< what follows is what the file says
    std::optional<FileStat> m_stat;
    Found m_found;
    Trouble m_trouble; ///< of reading the configuration
};

} // namespace veslora
