// SPDX-License-Identifier: MIT
// The file by which a process that sends a command learns which player another process reports. Any thread.
#pragma once

#include <optional>
#include <string>

namespace veslora {

/// It lies in "veslora" in the user's runtime directory. That folder is opened without following a link and
/// must be the user's own and closed to others; the file is replaced at once by a rename.
class ChosenPlayerFile {
  public:
    /// Without a runtime directory, an absolute path of a folder of our user, nothing is ever stored or read.
    explicit ChosenPlayerFile(std::string runtimeDirectory)
        : m_runtimeDirectory(std::move(runtimeDirectory)) {}

    /// Stores the player's name on the bus; an empty name removes the file. Tells whether that could be done.
    bool store(const std::string& name) const;

    /// The stored name; absent where there is none, and where the file holds anything but the name of a
    /// player.
    [[nodiscard]] std::optional<std::string> name() const;

  private:
    [[nodiscard]] int openFolder() const;

    std::string m_runtimeDirectory;
};

} // namespace veslora
