// SPDX-License-Identifier: MIT
// Writing by POSIX calls, for PosixFiles and PosixFolder: by an open folder and a name in it. A file or
// link is made under a passing name beside its place and moved there by a rename, so that no reader ever
// meets half of it. Any thread.
#pragma once

#include "VesloraLinux/System/FileDescriptor.h"
#include "VesloraUI/Platform/Files.h"

namespace veslora::PosixWriting {

/// A path cut at its last slash, with the folder held open: it stays the same one whatever is renamed
/// meanwhile.
struct Place {
    FileDescriptor folder;
    std::string name;
};

/// `invalid_argument` for a path whose last part is no name.
[[nodiscard]] std::error_code openPlace(const std::string& path, Place& place);

[[nodiscard]] std::error_code write(int folder, const std::string& name, const std::string& bytes,
                                    const WriteOptions& options);
[[nodiscard]] std::error_code makeLink(const std::string& target, int folder, const std::string& name);

} // namespace veslora::PosixWriting
