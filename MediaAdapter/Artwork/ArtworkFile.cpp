// SPDX-License-Identifier: MIT
#include "MediaAdapter/Artwork/ArtworkFile.h"

#include "MediaAdapter/Descriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace veslora::ArtworkFile {

QByteArray read(const std::string& path) {
    const Descriptor file(open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    struct stat status {};
    if (!file || fstat(file.value(), &status) != 0 || !S_ISREG(status.st_mode) ||
        status.st_uid != geteuid() || status.st_size > largest) {
        return {};
    }
    QByteArray bytes(static_cast<qsizetype>(status.st_size), Qt::Uninitialized);
    qsizetype length = 0;
    while (length < bytes.size()) {
        const ssize_t count =
            ::read(file.value(), bytes.data() + length, static_cast<size_t>(bytes.size() - length));
        if (count <= 0) {
            break;
        }
        length += count;
    }
    bytes.truncate(length);
    return bytes;
}

} // namespace veslora::ArtworkFile
