// SPDX-License-Identifier: MIT
// The half of PosixFiles that changes nothing: reading, asking, listing, following links.
#include "VesloraLinux/System/PosixFiles.h"

#include "VesloraLinux/System/FileDescriptor.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <filesystem>
#include <limits>

namespace veslora {
namespace {

constexpr int safeOpen = O_CLOEXEC | O_NONBLOCK | O_NOCTTY;

std::error_code lastError() {
    return {errno, std::generic_category()};
}

std::error_code refusal(const struct stat& status, const ReadOptions& options) {
    if (S_ISDIR(status.st_mode)) {
        return std::make_error_code(std::errc::is_a_directory);
    }
    if (!S_ISREG(status.st_mode)) {
        return std::make_error_code(std::errc::not_supported);
    }
    if (options.owners == Owners::ours && status.st_uid != geteuid()) {
        return std::make_error_code(std::errc::permission_denied);
    }
    if (static_cast<std::uint64_t>(status.st_size) > options.cap) {
        return std::make_error_code(std::errc::file_too_large);
    }
    return {};
}

/// Reads up to the end, which may lie elsewhere by now than `expected` says.
ReadResult readAll(int descriptor, std::size_t expected, std::size_t cap) {
    ReadResult result;
    std::size_t length = 0;
    // One byte more than expected, so that the end shows without a second round.
    result.bytes.resize(expected + 1);
    while (true) {
        if (length == result.bytes.size()) {
            result.bytes.resize(length * 2);
        }
        const ssize_t count = ::read(descriptor, result.bytes.data() + length, result.bytes.size() - length);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0) {
            return {{}, lastError()};
        }
        if (count == 0) {
            break;
        }
        length += static_cast<std::size_t>(count);
        if (length > cap) {
            return {{}, std::make_error_code(std::errc::file_too_large)};
        }
    }
    result.bytes.resize(length);
    return result;
}

/// Saturates, since a file may carry any stamp at all.
std::int64_t nanoseconds(const timespec& time) {
    std::int64_t result = 0;
    if (__builtin_mul_overflow(std::int64_t{time.tv_sec}, std::int64_t{1000000000}, &result) ||
        __builtin_add_overflow(result, std::int64_t{time.tv_nsec}, &result)) {
        return time.tv_sec < 0 ? std::numeric_limits<std::int64_t>::min()
                               : std::numeric_limits<std::int64_t>::max();
    }
    return result;
}

FileStat fileStat(const struct stat& status) {
    FileStat result;
    result.device = status.st_dev;
    result.inode = status.st_ino;
    result.size = status.st_size;
    result.modified =
        static_cast<double>(status.st_mtim.tv_sec) + static_cast<double>(status.st_mtim.tv_nsec) / 1e9;
    result.modifiedNanoseconds = nanoseconds(status.st_mtim);
    result.mode = status.st_mode & 07777U;
    result.isRegular = S_ISREG(status.st_mode);
    result.isDirectory = S_ISDIR(status.st_mode);
    result.isLink = S_ISLNK(status.st_mode);
    result.isOurs = status.st_uid == geteuid();
    return result;
}

class PosixFileReader final : public FileReader {
  public:
    explicit PosixFileReader(FileDescriptor file) : m_file(std::move(file)) {}

    std::optional<FileStat> stat() override {
        struct stat status {};
        return fstat(m_file.value(), &status) == 0 ? std::optional(fileStat(status)) : std::nullopt;
    }

    std::size_t read(char* bytes, std::size_t capacity, std::uint64_t offset) override {
        ssize_t count = -1;
        do {
            count = pread(m_file.value(), bytes, capacity, static_cast<off_t>(offset));
        } while (count < 0 && errno == EINTR);
        return count > 0 ? static_cast<std::size_t>(count) : 0;
    }

  private:
    FileDescriptor m_file;
};

std::optional<std::string> realPath(const std::string& path) {
    char resolved[PATH_MAX];
    return realpath(path.c_str(), resolved) != nullptr ? std::optional<std::string>(resolved) : std::nullopt;
}

std::optional<std::string> linkTarget(const std::string& path) {
    char target[PATH_MAX];
    const ssize_t length = readlink(path.c_str(), target, sizeof target);
    if (length <= 0 || static_cast<std::size_t>(length) == sizeof target) {
        return std::nullopt;
    }
    return std::string(target, static_cast<std::size_t>(length));
}

/// `realpath` knows only what exists, but a configuration file may be a link to one that is yet to be made.
/// Every round follows a link or drops the last part of the path.
std::optional<std::string> resolveMissing(const std::string& path, int roundsLeft) {
    if (auto real = realPath(path)) {
        return real;
    }
    const std::size_t slash = path.rfind('/');
    if (errno != ENOENT || roundsLeft == 0 || slash == std::string::npos) {
        return std::nullopt;
    }
    const std::string parent = slash == 0 ? "/" : path.substr(0, slash);
    if (const auto target = linkTarget(path)) {
        return resolveMissing(target->front() == '/' ? *target : parent + "/" + *target, roundsLeft - 1);
    }
    const auto resolvedParent = resolveMissing(parent, roundsLeft - 1);
    if (!resolvedParent) {
        return std::nullopt;
    }
    return (*resolvedParent == "/" ? "" : *resolvedParent) + path.substr(slash);
}

} // namespace

ReadResult PosixFiles::read(const std::string& path, const ReadOptions& options) {
    const int flags = safeOpen | O_RDONLY | (options.links == Links::refuse ? O_NOFOLLOW : 0);
    const FileDescriptor file(openat(AT_FDCWD, path.c_str(), flags));
    if (!file) {
        return {{}, lastError()};
    }
    struct stat status {};
    if (fstat(file.value(), &status) != 0) {
        return {{}, lastError()};
    }
    if (const std::error_code error = refusal(status, options)) {
        return {{}, error};
    }
    return readAll(file.value(), static_cast<std::size_t>(status.st_size), options.cap);
}

std::unique_ptr<FileReader> PosixFiles::open(const std::string& path) {
    FileDescriptor file(openat(AT_FDCWD, path.c_str(), safeOpen | O_RDONLY | O_NOFOLLOW));
    struct stat status {};
    constexpr ReadOptions anyLength = {.cap = std::numeric_limits<std::size_t>::max()};
    if (!file || fstat(file.value(), &status) != 0 || refusal(status, anyLength)) {
        return nullptr;
    }
    return std::make_unique<PosixFileReader>(std::move(file));
}

std::optional<FileStat> PosixFiles::stat(const std::string& path, Links links) {
    struct stat status {};
    if (fstatat(AT_FDCWD, path.c_str(), &status, links == Links::refuse ? AT_SYMLINK_NOFOLLOW : 0) != 0) {
        return std::nullopt;
    }
    return fileStat(status);
}

std::optional<std::vector<std::string>> PosixFiles::list(const std::string& directory) {
    std::error_code error;
    std::vector<std::string> names;
    for (std::filesystem::directory_iterator entry(directory, error), end; !error && entry != end;
         entry.increment(error)) {
        names.push_back(entry->path().filename().string());
    }
    // Half a list would look as if the rest had been removed.
    return error ? std::nullopt : std::optional(std::move(names));
}

std::string PosixFiles::resolve(const std::string& path) {
    constexpr int mostRounds = 64;
    return resolveMissing(path, mostRounds).value_or(path);
}

bool PosixFiles::isExecutable(const std::string& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
           faccessat(AT_FDCWD, path.c_str(), X_OK, AT_EACCESS) == 0;
}

} // namespace veslora
