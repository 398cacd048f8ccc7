// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/FileBeginning.h"

#include "VesloraLinux/System/FileDescriptor.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace veslora {

std::string fileBeginning(const std::string& path, std::size_t cap) {
    errno = 0;
    const FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    std::string text;
    char part[4096];
    while (file && text.size() < cap) {
        const ssize_t length = read(file.value(), part, std::min(sizeof part, cap - text.size()));
        if (length < 0 && errno == EINTR) {
            continue;
        }
        if (length <= 0) {
            break;
        }
        text.append(part, static_cast<std::size_t>(length));
    }
    return text;
}

} // namespace veslora
