// SPDX-License-Identifier: MIT
// The scripts of one agent's hooks, as they lie in the support directory. Main thread only.
#pragma once

#include "VesloraUI/Platform/Files.h"

#include <string>
#include <string_view>
#include <vector>

namespace veslora {

class SupportDirectory;

class HookScriptFiles {
  public:
    /// `names` are of HookScripts.
    HookScriptFiles(const SupportDirectory& support, std::vector<std::string_view> names);

    /// The command that runs a script, as it stands in an agent's configuration.
    [[nodiscard]] std::string commandOf(std::string_view name) const;

    /// Whether all of them are there and may be executed.
    [[nodiscard]] bool areReady() const;

    /// Writes them all. Throws `FileError`.
    void write() const;

    /// Writes them again where an older version of the program has left others, and tells whether it had.
    /// Makes none where none are; failures are ignored.
    bool update() const;

  private:
    [[nodiscard]] static std::error_code writeOne(Folder& folder, std::string_view name);

    const SupportDirectory& m_support;
    std::vector<std::string_view> m_names;
};

} // namespace veslora
