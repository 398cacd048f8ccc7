// SPDX-License-Identifier: MIT
// Our hooks in Codex's configuration: whether they are there, putting them in, taking them out. Codex runs a
// hook only after the user has trusted it, and remembers that by the hook's place in the file: so ours come
// last, and what the user has keeps its place. Main thread only.
#pragma once

#include "VesloraUI/Claude/Hooks/AgentHooks.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace veslora {

class CodexHooks final : public AgentHooks {
  public:
    CodexHooks(Files& files, SupportDirectory& support, std::string hooksFile);

    void check() override;
    void install() override;
    bool remove() override;

  private:
    [[nodiscard]] Found find(std::optional<std::string_view> text) const override;
    void noteConfiguration(std::optional<std::string_view> text) override;
    /// By Codex's own config.toml, which is read again only after it changed.
    [[nodiscard]] bool areTrusted() override;
    [[nodiscard]] bool readTrust() const;

    std::string m_trustFile;
    std::vector<std::string> m_places; ///< of our hooks, as Codex names them
    bool m_isTrustRead = false;        ///< what follows is what the file says
    std::optional<FileStat> m_trustStat;
    bool m_areTrusted = true;
};

} // namespace veslora
