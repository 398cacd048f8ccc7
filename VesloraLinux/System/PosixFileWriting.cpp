// SPDX-License-Identifier: MIT
// The half of PosixFiles that changes things. A file or link is made under a passing name beside its place
// and moved there by a rename, so that no reader ever meets half of it.
#include "VesloraLinux/System/FileDescriptor.h"
#include "VesloraLinux/System/PosixFiles.h"

#include <fcntl.h>
#include <sys/random.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <ctime>

namespace veslora {
namespace {

std::error_code lastError() {
    return {errno, std::generic_category()};
}

/// A path cut at its last slash, with the folder held open: it stays the same one whatever is renamed
/// meanwhile.
struct Place {
    FileDescriptor folder;
    std::string name;
};

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

/// A name in `place`'s folder under which something may be made. Unless it was moved to its place, what was
/// made is removed again.
class PassingEntry {
  public:
    explicit PassingEntry(const Place& place) : m_place(place), m_name(passingName()) {}
    PassingEntry(const PassingEntry&) = delete;
    PassingEntry& operator=(const PassingEntry&) = delete;
    ~PassingEntry() {
        if (m_isMade) {
            unlinkat(m_place.folder.value(), m_name.c_str(), 0);
        }
    }

    /// Calls `make` with the name until it finds none taken; `make` returns false and sets errno on failure.
    template <typename Make>
    std::error_code make(const Make& make) {
        constexpr int mostAttempts = 100;
        for (int attempt = 0; attempt < mostAttempts; ++attempt) {
            if (make(m_place.folder.value(), m_name.c_str())) {
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

    std::error_code moveToPlace() {
        if (renameat(m_place.folder.value(), m_name.c_str(), m_place.folder.value(), m_place.name.c_str()) !=
            0) {
            return lastError();
        }
        m_isMade = false;
        return {};
    }

  private:
    const Place& m_place;
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

std::optional<struct stat> regularFileAt(const Place& place) {
    struct stat status {};
    if (fstatat(place.folder.value(), place.name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0 ||
        !S_ISREG(status.st_mode)) {
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

std::error_code makeOneDirectory(const std::string& path, std::uint32_t mode) {
    if (mkdir(path.c_str(), mode) == 0) {
        // The user's mask may have taken away what the caller asked for.
        return chmod(path.c_str(), mode) == 0 ? std::error_code() : lastError();
    }
    const std::error_code error = lastError();
    struct stat status {};
    if (::stat(path.c_str(), &status) == 0) {
        return S_ISDIR(status.st_mode) ? std::error_code() : std::make_error_code(std::errc::not_a_directory);
    }
    return error;
}

} // namespace

std::error_code PosixFiles::write(const std::string& path, const std::string& bytes,
                                  const WriteOptions& options) {
    Place place;
    if (const std::error_code error = openPlace(path, place)) {
        return error;
    }
    PassingEntry entry(place);
    FileDescriptor file;
    const std::error_code made = entry.make([&file](int folder, const char* name) {
        constexpr int flags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
        file = FileDescriptor(openat(folder, name, flags, 0600));
        return static_cast<bool>(file);
    });
    if (made) {
        return made;
    }
    if (const std::error_code error = fill(file, bytes, regularFileAt(place), options)) {
        return error;
    }
    if (const std::error_code error = entry.moveToPlace()) {
        return error;
    }
    // Some file systems know no sync of a folder; the new file is in place whatever is answered here.
    if (options.sync == Sync::yes) {
        fsync(place.folder.value());
    }
    return {};
}

std::error_code PosixFiles::remove(const std::string& path) {
    return unlink(path.c_str()) == 0 ? std::error_code() : lastError();
}

std::error_code PosixFiles::makeDirectory(const std::string& path, std::uint32_t mode) {
    std::error_code error = makeOneDirectory(path, mode);
    if (error != std::errc::no_such_file_or_directory) {
        return error;
    }
    error.clear();
    for (std::size_t end = path.find('/', 1); !error && end != std::string::npos;
         end = path.find('/', end + 1)) {
        error = makeOneDirectory(path.substr(0, end), mode);
    }
    return error ? error : makeOneDirectory(path, mode);
}

std::error_code PosixFiles::setMode(const std::string& path, std::uint32_t mode) {
    return chmod(path.c_str(), mode) == 0 ? std::error_code() : lastError();
}

std::error_code PosixFiles::makeLink(const std::string& target, const std::string& path) {
    Place place;
    if (const std::error_code error = openPlace(path, place)) {
        return error;
    }
    PassingEntry entry(place);
    const std::error_code made = entry.make(
        [&target](int folder, const char* name) { return symlinkat(target.c_str(), folder, name) == 0; });
    return made ? made : entry.moveToPlace();
}

} // namespace veslora
