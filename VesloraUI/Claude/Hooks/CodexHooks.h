// SPDX-License-Identifier: MIT
// Our hooks in Codex's configuration: whether they are there, putting them in, taking them out. Codex runs a
// hook only after the user has trusted it, and remembers that by the hook's place in the file: so ours come
// last, and what the user has keeps its place. Main thread only.
#pragma once

#include "VesloraUI/Claude/Hooks/AgentHooks.h"

#include <optional>
#include <string>
#include <string_view>

namespace veslora {

class CodexHooks final : public AgentHooks {
  public:
    CodexHooks(Files& files, SupportDirectory& support, std::string hooksFile);

    void install() override;
    bool remove() override;

  private:
    [[nodiscard]] Found find(std::optional<std::string_view> text) const override;
};

} // namespace veslora
