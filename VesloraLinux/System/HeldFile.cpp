// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/HeldFile.h"

#include "VesloraUI/Platform/FileRefusal.h"

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>
#include <csignal>

namespace veslora {
namespace {

constexpr int safeOpen = O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;

bool isText(int file, const std::string& text) {
    // One byte more than expected, so that a longer file shows.
    std::string found(text.size() + 1, '\0');
    std::size_t length = 0;
    while (length < found.size()) {
        const ssize_t count =
            pread(file, found.data() + length, found.size() - length, static_cast<off_t>(length));
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            break;
        }
        length += static_cast<std::size_t>(count);
    }
    found.resize(length);
    return found == text;
}

} // namespace

std::error_code HeldFile::hold(int folder, const char* name) {
    FileDescriptor file(openat(folder, name, safeOpen));
    if (!file && (errno == ENOENT || errno == ELOOP)) {
        return FileRefusal::changed;
    }
    if (!file || fstat(file.value(), &m_status) != 0) {
        return {errno, std::generic_category()};
    }
    if (!S_ISREG(m_status.st_mode)) {
        return FileRefusal::changed;
    }
    // Tells a sweep of leftovers that this is in use, also under a passing name.
    flock(file.value(), LOCK_SH | LOCK_NB);
    m_file = std::move(file);
    return {};
}

bool HeldFile::holds(const std::string& text) const {
    return isText(m_file.value(), text);
}

bool HeldFile::isAt(int folder, const char* name, const std::string& text) const {
    const FileDescriptor file(openat(folder, name, safeOpen));
    struct stat now {};
    return file && fstat(file.value(), &now) == 0 && now.st_dev == m_status.st_dev &&
           now.st_ino == m_status.st_ino && now.st_mode == m_status.st_mode &&
           now.st_uid == m_status.st_uid && now.st_gid == m_status.st_gid &&
           now.st_nlink == m_status.st_nlink && isText(file.value(), text);
}

bool HeldFile::isBeingWritten() const {
    // Should the lease be broken, that must not end the program, as the usual signal would.
    fcntl(m_file.value(), F_SETSIG, SIGURG);
    // The system grants a lease on reading only while nobody has the file open for writing.
    if (fcntl(m_file.value(), F_SETLEASE, F_RDLCK) == 0) {
        fcntl(m_file.value(), F_SETLEASE, F_UNLCK);
        return false;
    }
    return errno == EAGAIN;
}

} // namespace veslora
