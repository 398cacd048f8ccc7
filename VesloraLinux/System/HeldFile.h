// SPDX-License-Identifier: MIT
// A file that was looked at and is held open, so that its inode can't become another file's meanwhile. Any
// thread, one at a time.
#pragma once

#include "VesloraLinux/System/FileDescriptor.h"

#include <sys/stat.h>

#include <string>
#include <system_error>

namespace veslora {

class HeldFile {
  public:
    /// Takes hold of an entry. `FileRefusal::changed` where it is nothing, or no regular file.
    [[nodiscard]] std::error_code hold(int folder, const char* name);

    [[nodiscard]] int descriptor() const { return m_file.value(); }
    [[nodiscard]] const struct stat& status() const { return m_status; }

    /// Whether that is its text now.
    [[nodiscard]] bool holds(const std::string& text) const;

    /// Whether an entry is this very file, with that text and the owner and mode that it had.
    [[nodiscard]] bool isAt(int folder, const char* name, const std::string& text) const;

    /// Whether another program has the file open for writing: what it writes later would be lost with the
    /// file. False where the file system can't tell.
    [[nodiscard]] bool isBeingWritten() const;

  private:
    FileDescriptor m_file;
    struct stat m_status {};
};

} // namespace veslora
