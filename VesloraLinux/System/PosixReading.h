// SPDX-License-Identifier: MIT
// Reading and asking by POSIX calls, for PosixFiles and PosixFolder. Each takes a folder's descriptor and a
// name in it, or AT_FDCWD and a path. Every open is non-blocking and judged by the opened file itself, never
// by an earlier look at its path, so that nobody can swap a file between the look and the use. Any thread.
#pragma once

#include "VesloraLinux/System/FileDescriptor.h"
#include "VesloraUI/Platform/Files.h"

#include <sys/stat.h>

#include <cerrno>
#include <limits>

namespace veslora::PosixReading {

/// What `errno` says.
[[nodiscard]] inline std::error_code lastError() {
    return {errno, std::generic_category()};
}

[[nodiscard]] FileStat fileStat(const struct stat& status);

[[nodiscard]] ReadResult read(int folder, const char* name, const ReadOptions& options);
[[nodiscard]] std::unique_ptr<FileReader> open(int folder, const char* name);
[[nodiscard]] std::optional<FileStat> stat(int folder, const char* name, Links links);
[[nodiscard]] std::optional<std::string> linkTarget(int folder, const char* name);
[[nodiscard]] bool isExecutable(int folder, const char* name, Links links);

/// The names in an opened folder, so many at most, which is read from its beginning.
[[nodiscard]] std::optional<std::vector<std::string>>
list(int folder, std::size_t most = std::numeric_limits<std::size_t>::max());

} // namespace veslora::PosixReading
