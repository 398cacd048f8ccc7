// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/PosixReading.h"

#include "VesloraLinux/System/LostErrors.h"

#include <dirent.h>
#include <fcntl.h>

#include <climits>
#include <limits>
#include <string_view>
#include <utility>

namespace veslora::PosixReading {
namespace {

constexpr int safeOpen = O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;

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
        if (count < 0) {
            LostErrors::tell("read", m_file.value(), "");
        } else {
            LostErrors::forget("read", m_file.value(), "");
        }
        return count > 0 ? static_cast<std::size_t>(count) : 0;
    }

  private:
    FileDescriptor m_file;
};

/// Closes the folder with it.
struct Listing {
    DIR* directory = nullptr;

    explicit Listing(DIR* opened) : directory(opened) {}
    Listing(const Listing&) = delete;
    Listing& operator=(const Listing&) = delete;
    ~Listing() {
        if (directory != nullptr) {
            closedir(directory);
        }
    }
};

} // namespace

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

ReadResult read(int folder, const char* name, const ReadOptions& options) {
    const FileDescriptor file(
        openat(folder, name, safeOpen | (options.links == Links::refuse ? O_NOFOLLOW : 0)));
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

std::unique_ptr<FileReader> open(int folder, const char* name) {
    FileDescriptor file(openat(folder, name, safeOpen | O_NOFOLLOW));
    struct stat status {};
    constexpr ReadOptions anyLength = {.cap = std::numeric_limits<std::size_t>::max()};
    bool isUsable = file && fstat(file.value(), &status) == 0;
    if (const std::error_code error = isUsable ? refusal(status, anyLength) : std::error_code()) {
        isUsable = false;
        errno = error.value();
    }
    if (!isUsable) {
        LostErrors::tell("open", folder, name);
        return nullptr;
    }
    LostErrors::forget("open", folder, name);
    return std::make_unique<PosixFileReader>(std::move(file));
}

std::optional<FileStat> stat(int folder, const char* name, Links links) {
    struct stat status {};
    if (fstatat(folder, name, &status, links == Links::refuse ? AT_SYMLINK_NOFOLLOW : 0) != 0) {
        LostErrors::tell("look at", folder, name);
        return std::nullopt;
    }
    LostErrors::forget("look at", folder, name);
    return fileStat(status);
}

std::optional<std::string> linkTarget(int folder, const char* name) {
    char target[PATH_MAX];
    const ssize_t length = readlinkat(folder, name, target, sizeof target);
    if (length <= 0 || static_cast<std::size_t>(length) == sizeof target) {
        return std::nullopt;
    }
    return std::string(target, static_cast<std::size_t>(length));
}

bool isExecutable(int folder, const char* name, Links links) {
    const auto found = stat(folder, name, links);
    return found && found->isRegular && faccessat(folder, name, X_OK, AT_EACCESS) == 0;
}

std::optional<std::vector<std::string>> list(int folder, std::size_t most) {
    // A descriptor of its own, as a listing moves its place and closes it.
    FileDescriptor own(openat(folder, ".", safeOpen | O_DIRECTORY));
    const Listing listing(own ? fdopendir(own.value()) : nullptr);
    if (listing.directory == nullptr) {
        LostErrors::tell("list", folder, "");
        return std::nullopt;
    }
    own.release();
    std::vector<std::string> names;
    errno = 0;
    while (names.size() < most) {
        const dirent* entry = readdir(listing.directory);
        if (entry == nullptr) {
            break;
        }
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..") {
            names.emplace_back(name);
        }
        errno = 0;
    }
    if (errno != 0) {
        LostErrors::tell("list", folder, "");
        // Half a list would look as if the rest had been removed.
        return std::nullopt;
    }
    LostErrors::forget("list", folder, "");
    return names;
}

} // namespace veslora::PosixReading
