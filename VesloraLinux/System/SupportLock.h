// SPDX-License-Identifier: MIT
// The lock by which one program at a time has the support directory, and the look at whether that directory
// is of any use. Main thread only.
#pragma once

#include "VesloraLinux/System/FileDescriptor.h"
#include "VesloraUI/Platform/Files.h"

#include <string>
#include <variant>

namespace veslora {

/// Held until it is destroyed, and however the program ends.
class SupportLock {
  public:
    /// Another program has it.
    struct Held {};
    /// Nothing can be kept in the directory; for the user, without a full stop: "it is a link".
    struct Unusable {
        std::string reason;
    };
    using Attempt = std::variant<SupportLock, Held, Unusable>;

    /// Makes the directory, for our user alone, if it is missing, sees that it is a folder of our own user's
    /// in which files can be made, and locks it.
    [[nodiscard]] static Attempt take(Files& files, const std::string& directory);

    /// The directory that was locked, whatever its path leads to by now.
    [[nodiscard]] const FileDescriptor& directory() const { return m_directory; }

  private:
    SupportLock(FileDescriptor directory, FileDescriptor lock)
        : m_directory(std::move(directory)), m_lock(std::move(lock)) {}

    FileDescriptor m_directory;
    FileDescriptor m_lock;
};

} // namespace veslora
