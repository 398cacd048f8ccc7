// SPDX-License-Identifier: MIT
// The socket in the support directory by which a program that runs is asked for something where there is no
// bus. A client writes one line and reads one line: the words of a command, and "done" or "failed", each
// with what belongs to it after a blank. To connect and to leave without a word asks for the settings, as
// earlier versions do.
#pragma once

#include "VesloraLinux/System/FileDescriptor.h"

#include <string_view>

namespace veslora::CommandSocket {

inline constexpr const char* name = "socket";
inline constexpr std::string_view done = "done";
inline constexpr std::string_view failed = "failed";
/// Bytes of a line, its end included. Nobody reads on beyond that.
inline constexpr std::size_t longestQuestion = 8192;
inline constexpr std::size_t longestAnswer = 8192;

/// Listens in an opened directory, in place of a socket that one that was killed has left there. Absent, with
/// `errno`, where that can't be done.
[[nodiscard]] FileDescriptor listen(const FileDescriptor& directory);

/// Connects to the one in an opened directory, without waiting. Absent, with `errno`: ENOENT or ECONNREFUSED
/// where nobody listens, EAGAIN where the one that listens has long not accepted.
[[nodiscard]] FileDescriptor connect(const FileDescriptor& directory);

/// Whether the process at the other end is of our own user.
[[nodiscard]] bool isOurUsers(const FileDescriptor& connection);

} // namespace veslora::CommandSocket
