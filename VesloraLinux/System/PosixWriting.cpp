// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/PosixWriting.h"

#include "VesloraLinux/System/PosixReading.h"

#include <fcntl.h>

#include <cerrno>

namespace veslora::PosixWriting {
namespace {

using PosixReading::lastError;

std::error_code writeAll(int descriptor, const std::string& bytes) {
    std::size_t written = 0;
    while (written < bytes.size()) {
        const ssize_t count = ::write(descriptor, bytes.data() + written, bytes.size() - written);
        if (count < 0 && errno != EINTR) {
            return lastError();
        }
        written += count > 0 ? static_cast<std::size_t>(count) : 0;
    }
    return {};
}

/// Gives the new file the owner, group and mode that it is to have.
std::error_code dress(int descriptor, const struct stat* former, const WriteOptions& options) {
    mode_t mode = options.mode.value_or(former ? former->st_mode & 07777U : 0600U);
    if (former) {
        const bool keepsOwner = former->st_uid == geteuid() || fchown(descriptor, former->st_uid, -1) == 0;
        struct stat made {};
        const bool keepsGroup = (fstat(descriptor, &made) == 0 && made.st_gid == former->st_gid) ||
                                fchown(descriptor, -1, former->st_gid) == 0;
        // Rights that were meant for another owner or group must not go to the owner or group of now.
        if (!keepsOwner) {
            mode &= ~static_cast<mode_t>(S_ISUID);
        }
        if (!keepsGroup) {
            const mode_t others = mode & S_IRWXO;
            mode &= ~static_cast<mode_t>(S_ISGID | S_IRWXG) | (others << 3);
        }
    }
    return fchmod(descriptor, mode) == 0 ? std::error_code() : lastError();
}

std::optional<struct stat> regularFileAt(int folder, const std::string& name) {
    struct stat status {};
    if (fstatat(folder, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0 || !S_ISREG(status.st_mode)) {
        return std::nullopt;
    }
    return status;
}

} // namespace

std::error_code fill(int file, const std::string& bytes, const struct stat* former,
                     const WriteOptions& options) {
    if (const std::error_code error = writeAll(file, bytes)) {
        return error;
    }
    if (const std::error_code error = dress(file, former, options)) {
        return error;
    }
    if (options.sync == Sync::yes && fsync(file) != 0) {
        return lastError();
    }
    return {};
}

std::error_code openPlace(const std::string& path, Place& place) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos || slash + 1 == path.size()) {
        return std::make_error_code(std::errc::invalid_argument);
    }
    place.name = path.substr(slash + 1);
    const std::string folder = slash == 0 ? "/" : path.substr(0, slash);
    place.folder = FileDescriptor(openat(AT_FDCWD, folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    return place.folder ? std::error_code() : lastError();
}

std::error_code makeFile(PassingEntry& entry, FileDescriptor& file) {
    return entry.make([&file](int folder, const char* name) {
        constexpr int flags = O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
        file = FileDescriptor(openat(folder, name, flags, 0600));
        return static_cast<bool>(file);
    });
}

std::error_code write(int folder, const std::string& name, const std::string& bytes,
                      const WriteOptions& options, std::string_view prefix) {
    PassingEntry entry(folder, prefix);
    FileDescriptor file;
    if (const std::error_code error = makeFile(entry, file)) {
        return error;
    }
    const std::optional<struct stat> former = regularFileAt(folder, name);
    if (const std::error_code error = fill(file.value(), bytes, former ? &*former : nullptr, options)) {
        return error;
    }
    if (file.close() != 0) {
        return lastError();
    }
    if (const std::error_code error = entry.moveTo(name)) {
        return error;
    }
    // Some file systems know no sync of a folder; the new file is in place whatever is answered here.
    if (options.sync == Sync::yes) {
        fsync(folder);
    }
    return {};
}

std::error_code makeLink(const std::string& target, int folder, const std::string& name,
                         std::string_view prefix) {
    PassingEntry entry(folder, prefix);
    const std::error_code made = entry.make(
        [&target](int where, const char* passing) { return symlinkat(target.c_str(), where, passing) == 0; });
    return made ? made : entry.moveTo(name);
}

} // namespace veslora::PosixWriting
