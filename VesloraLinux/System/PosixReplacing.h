// SPDX-License-Identifier: MIT
// Replacing a file that other programs edit too, so that no edit of theirs is ever lost. The system knows no
// "rename if unchanged", so the new file and the old one are exchanged atomically, and only then it is
// looked whether what came out is what was read; if not, they are exchanged back. Any thread.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <system_error>

namespace veslora::PosixReplacing {

/// What is about to happen.
enum class Step {
    looking,    ///< the new file is written; the last look at the old one comes
    exchanging, ///< the new file takes its place
    comparing,  ///< what came out is held against what was read
    removing,   ///< it is held once more, and removed
    givingBack, ///< it is not what was read, and goes back to its place
    checking,   ///< what came out then is held against what was written
};

/// For tests: what happens between the steps, and what the file system can't do.
struct Circumstances {
    std::function<void(Step)> before = [](Step) {};
    bool canExchange = true; ///< NFS, FAT and some others can't
};

/// As `Files::replaceIfUnchanged`, `removeIfUnchanged` and `sweepLeftovers`.
[[nodiscard]] std::error_code replace(const std::string& path, const std::optional<std::string>& expected,
                                      const std::string& bytes, const Circumstances& circumstances = {});
[[nodiscard]] std::error_code remove(const std::string& path, const std::string& expected,
                                     const Circumstances& circumstances = {});
void sweep(const std::string& path);

} // namespace veslora::PosixReplacing
