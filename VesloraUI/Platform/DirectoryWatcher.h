// SPDX-License-Identifier: MIT
// The seam that tells when the content of a directory changed. Main thread only.
#pragma once

#include <functional>
#include <memory>
#include <string>

namespace veslora {

/// What counts as a change of a directory.
enum class DirectoryChanges {
    movedInto, ///< only a file that arrives by rename: complete from its first moment on
    any,       ///< also a file that was written and closed, made, moved away or removed
};

/// A running watch. Destroying it ends it; its callback is never called afterwards.
class DirectoryWatch {
  public:
    virtual ~DirectoryWatch() = default;

    /// False once the directory is gone or the system ran out of watches; nothing is told any more.
    [[nodiscard]] virtual bool isActive() const = 0;
};

class DirectoryWatcher {
  public:
    virtual ~DirectoryWatcher() = default;

    /// Watches `directory` itself, not what lies deeper. Everything that has happened by the time the program
    /// gets round to it makes one call of `changed`; an overflow of the system's queue does too. Null when
    /// the directory can't be watched, because it does not exist or no watch is left.
    [[nodiscard]] virtual std::unique_ptr<DirectoryWatch>
    watch(const std::string& directory, DirectoryChanges changes, std::function<void()> changed) = 0;
};

} // namespace veslora
