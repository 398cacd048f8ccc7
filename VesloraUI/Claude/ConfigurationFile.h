// SPDX-License-Identifier: MIT
// A configuration file of an agent's, which belongs to the user: read whole, backed up, and replaced in one
// step. Main thread only.
#pragma once

#include "VesloraUI/Platform/Files.h"

#include <optional>
#include <string>

namespace veslora {

class ConfigurationFile {
  public:
    /// Nobody's settings come near this size; a larger file is left alone.
    static constexpr std::size_t cap = std::size_t{16} << 20;

    /// `path` may be a link; what it points to is the file.
    ConfigurationFile(Files& files, const std::string& path);

    /// The file's text; absent when there is no file. Throws `std::system_error` when it can't be read.
    /// Whether the text is JSON, or even UTF-8, is for the reader of the text to find out.
    [[nodiscard]] std::optional<std::string> read();

    /// Replaces the file by `text`, after keeping `old` as `<name>.veslora-backup` beside it. The file keeps
    /// its mode, its owner and the link that leads to it. Throws `std::system_error`; without a backup
    /// nothing is written, and neither when somebody else has changed the file since it was read.
    void write(const std::string& text, const std::optional<std::string>& old) const;

    /// Deletes the file itself. Throws `std::system_error`, also when somebody else has changed the file
    /// since it was read.
    void remove() const;

  private:
    /// What the file is now; throws unless it is as it was read.
    std::optional<FileStat> unchanged() const;

    Files& m_files;
    std::string m_target;
    std::optional<FileStat> m_asRead;
};

/// Throws `std::system_error` with `path` in its message if there is an error.
void throwIfFailed(const std::error_code& error, const std::string& path);

} // namespace veslora
