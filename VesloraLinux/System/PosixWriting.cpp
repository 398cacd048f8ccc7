// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/PosixWriting.h"

#include "VesloraLinux/System/PosixReading.h"

#include <fcntl.h>
#include <sys/random.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <ctime>

namespace veslora::PosixWriting {
namespace {

using PosixReading::lastError;

std::string passingName() {
    std::uint64_t random = 0;
    if (getrandom(&random, sizeof random, GRND_NONBLOCK) != sizeof random) {
        // Only before the kernel's generator is ready: then the clock will do, since an existing name is
        // refused.
        timespec now{};
        clock_gettime(CLOCK_MONOTONIC, &now);
        random = static_cast<std::uint64_t>(now.tv_nsec);
    }
    char name[32];
    std::snprintf(name, sizeof name, "tmp.%012llx",
                  static_cast<unsigned long long>(random & 0xffffffffffffU));
    return name;
}

/// A name in a folder under which something may be made. Unless it was moved to its place, what was
/// made is removed again.
class PassingEntry {
  public:
    explicit PassingEntry(int folder) : m_folder(folder), m_name(passingName()) {}
    PassingEntry(const PassingEntry&) = delete;
    PassingEntry& operator=(const PassingEntry&) = delete;
    ~PassingEntry() {
        if (m_isMade) {
            unlinkat(m_folder, m_name.c_str(), 0);
        }
    }

    /// Calls `make` with the name until it finds none taken; `make` returns false and sets errno on failure.
    template <typename Make>
    std::error_code make(const Make& make) {
        constexpr int mostAttempts = 100;
        for (int attempt = 0; attempt < mostAttempts; ++attempt) {
            if (make(m_folder, m_name.c_str())) {
                m_isMade = true;
                return {};
            }
            if (errno != EEXIST) {
                return lastError();
            }
            m_name = passingName();
        }
        return std::make_error_code(std::errc::file_exists);
    }

    std::error_code moveTo(const std::string& name) {
        if (renameat(m_folder, m_name.c_str(), m_folder, name.c_str()) != 0) {
            return lastError();
        }
        m_isMade = false;
        return {};
    }

  private:
    int m_folder;
    std::string m_name;
    bool m_isMade = false;
};

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
std::error_code dress(int descriptor, const std::optional<struct stat>& former, const WriteOptions& options) {
    mode_t mode = options.mode.value_or(former ? former->st_mode & 07777U : 0600U);
    if (former) {
        const bool keepsOwner = former->st_uid == geteuid() || fchown(descriptor, former->st_uid, -1) == 0;
        struct stat made {};
        const bool keepsGroup = (fstat(descriptor, &made) == 0 && made.st_gid == former->st_gid) ||
                                fchown(descriptor, -1, former->st_gid) == 0;
        // Rights that were meant for another owner or group must not fall to whoever stands there now.
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

std::error_code fill(FileDescriptor& file, const std::string& bytes, const std::optional<struct stat>& former,
                     const WriteOptions& options) {
    if (const std::error_code error = writeAll(file.value(), bytes)) {
        return error;
    }
    if (const std::error_code error = dress(file.value(), former, options)) {
        return error;
    }
    if (options.sync == Sync::yes && fsync(file.value()) != 0) {
        return lastError();
    }
    return file.close() == 0 ? std::error_code() : lastError();
}

} // namespace

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

std::error_code write(int folder, const std::string& name, const std::string& bytes,
                      const WriteOptions& options) {
    PassingEntry entry(folder);
    FileDescriptor file;
    const std::error_code made = entry.make([&file](int where, const char* passing) {
        constexpr int flags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
        file = FileDescriptor(openat(where, passing, flags, 0600));
        return static_cast<bool>(file);
    });
    if (made) {
        return made;
    }
    if (const std::error_code error = fill(file, bytes, regularFileAt(folder, name), options)) {
        return error;
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

std::error_code makeLink(const std::string& target, int folder, const std::string& name) {
    PassingEntry entry(folder);
    const std::error_code made = entry.make(
        [&target](int where, const char* passing) { return symlinkat(target.c_str(), where, passing) == 0; });
    return made ? made : entry.moveTo(name);
}

} // namespace veslora::PosixWriting
