// SPDX-License-Identifier: MIT
#include "UpdateFetcher/PackageFolder.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <memory>
#include <utility>
#include <vector>

namespace veslora {

namespace {

constexpr mode_t ours = 0600;
constexpr mode_t others = 0077;

bool isPrivate(int folder) {
    struct stat status {};
    return fstat(folder, &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == geteuid() &&
           (status.st_mode & others) == 0;
}

/// All of it from its beginning, wherever it was last written.
std::optional<std::string> bytesOf(int file, std::int64_t length) {
    std::string bytes(static_cast<std::size_t>(length), '\0');
    std::size_t at = 0;
    while (at < bytes.size()) {
        const ssize_t count = pread(file, bytes.data() + at, bytes.size() - at, static_cast<off_t>(at));
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            return std::nullopt;
        }
        at += static_cast<std::size_t>(count);
    }
    return bytes;
}

void closeIfOpen(int& descriptor) {
    if (descriptor >= 0) {
        close(std::exchange(descriptor, -1));
    }
}

} // namespace

PackageFolder::PackageFolder(const std::string& path)
    : m_folder(open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC)) {
    if (!isPrivate(m_folder)) {
        closeIfOpen(m_folder);
    }
}

PackageFolder::~PackageFolder() {
    closeIfOpen(m_file);
    closeIfOpen(m_folder);
}

void PackageFolder::clear() const {
    const std::unique_ptr<DIR, int (*)(DIR*)> entries(fdopendir(fcntl(m_folder, F_DUPFD_CLOEXEC, 0)),
                                                      closedir);
    if (!entries) {
        return;
    }
    std::vector<std::string> names;
    while (const dirent* const entry = readdir(entries.get())) { // NOLINT(concurrency-mt-unsafe)
        names.emplace_back(entry->d_name);
    }
    for (const std::string& name : names) {
        // A folder is not removed by this.
        unlinkat(m_folder, name.c_str(), 0);
    }
}

bool PackageFolder::begin(const std::string& name) {
    if (!isUsable()) {
        return false;
    }
    clear();
    m_name = name;
    m_file = openat(m_folder, partOf(name).c_str(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, ours);
    return m_file >= 0;
}

bool PackageFolder::add(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = write(m_file, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            return false;
        }
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

std::optional<std::string> PackageFolder::written() const {
    struct stat status {};
    return fstat(m_file, &status) == 0 ? bytesOf(m_file, status.st_size) : std::nullopt;
}

bool PackageFolder::keep() {
    const bool isKept =
        fsync(m_file) == 0 && renameat(m_folder, partOf(m_name).c_str(), m_folder, m_name.c_str()) == 0;
    closeIfOpen(m_file);
    return isKept;
}

void PackageFolder::drop() {
    if (m_file >= 0) {
        unlinkat(m_folder, partOf(m_name).c_str(), 0);
        closeIfOpen(m_file);
    }
}

std::optional<std::string> PackageFolder::read(const std::string& name, std::int64_t length) const {
    if (!isUsable()) {
        return std::nullopt;
    }
    int file = openat(m_folder, name.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    struct stat status {};
    const bool isPackage = fstat(file, &status) == 0 && S_ISREG(status.st_mode) &&
                           status.st_uid == geteuid() && status.st_nlink == 1 && status.st_size == length;
    auto bytes = isPackage ? bytesOf(file, length) : std::nullopt;
    closeIfOpen(file);
    return bytes;
}

} // namespace veslora
