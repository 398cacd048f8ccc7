// SPDX-License-Identifier: MIT
// The seam that tells when the content of a directory changed. Main thread only.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace veslora {

/// What counts as a change of a directory.
enum class DirectoryChanges {
    movedInto, ///< only a file that arrives by rename: complete from its first moment on
    any,       ///< also a file that was written and closed, made, moved away or removed
};

/// What happened in a directory since the last call.
struct DirectoryNews {
    std::vector<std::string> names; ///< of what was written, made, moved, removed or given other attributes
    /// False when more may have happened than the names tell: the system's queue ran over, or the directory
    /// itself changed or went away.
    bool isComplete = true;
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

    /// The same for somebody who follows the files in it while they are written: tells their names, of any
    /// change and of every single write.
    [[nodiscard]] virtual std::unique_ptr<DirectoryWatch>
    watchFiles(const std::string& directory, std::function<void(const DirectoryNews&)> changed) = 0;
};

} // namespace veslora
