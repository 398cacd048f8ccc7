// SPDX-License-Identifier: MIT
// A configuration file of an agent's, which belongs to the user: read whole, backed up, and replaced in one
// step unless somebody else has changed it meanwhile. Main thread only.
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

    /// Where the file itself lies.
    [[nodiscard]] const std::string& target() const { return m_target; }

    /// The file's text; absent when there is no file. Throws `FileError` when it can't be read. Whether the
    /// text is JSON, or even UTF-8, is for the reader of the text to find out.
    const std::optional<std::string>& read();
    /// What was read or written last.
    [[nodiscard]] const std::optional<std::string>& text() const { return m_text; }

    /// Keeps the text that was read as `<name>.veslora-backup` beside the file, for the user alone; there
    /// must have been one. Throws `FileError`.
    void backUp() const;

    /// Replaces the file by `text`, or makes it. It keeps its mode, owner, access list, attributes and the
    /// link that leads to it. Throws `FileError`, with a `FileRefusal` where it can't keep them or where the
    /// file is not what was read any more; then nothing was written.
    void write(const std::string& text);

    /// Removes what a program that was killed while it wrote has left beside the file; `write` and `remove`
    /// do so too.
    void sweep();

    /// Deletes the file itself, on the same conditions.
    void remove();

  private:
    Files& m_files;
    std::string m_target;
    std::optional<std::string> m_text;
};

} // namespace veslora
