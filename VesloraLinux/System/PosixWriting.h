// SPDX-License-Identifier: MIT
// Writing by POSIX calls, for PosixFiles and PosixFolder: by an open folder and a name in it. A file or
// link is made under a passing name beside its place and moved there by a rename, so that no reader ever
// meets half of it. Any thread.
#pragma once

#include "VesloraLinux/System/FileDescriptor.h"
#include "VesloraLinux/System/PassingEntry.h"
#include "VesloraUI/Platform/Files.h"

#include <sys/stat.h>

#include <string>
#include <string_view>

namespace veslora::PosixWriting {

/// A path cut at its last slash, with the folder held open: it stays the same one whatever is renamed
/// meanwhile.
struct Place {
    FileDescriptor folder;
    std::string name;
};

/// `invalid_argument` for a path whose last part is no name.
[[nodiscard]] std::error_code openPlace(const std::string& path, Place& place);

/// Makes an empty file that only our user may read and write.
[[nodiscard]] std::error_code makeFile(PassingEntry& entry, FileDescriptor& file);

/// Writes a new file whole, and gives it the mode, owner and group that it is to have: those of `former`
/// where that is not null.
[[nodiscard]] std::error_code fill(int file, const std::string& bytes, const struct stat* former,
                                   const WriteOptions& options);

/// `prefix` is of PassingEntry.
[[nodiscard]] std::error_code write(int folder, const std::string& name, const std::string& bytes,
                                    const WriteOptions& options, std::string_view prefix);
[[nodiscard]] std::error_code makeLink(const std::string& target, int folder, const std::string& name,
                                       std::string_view prefix);

} // namespace veslora::PosixWriting
