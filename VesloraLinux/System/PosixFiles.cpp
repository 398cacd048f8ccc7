// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/PosixFiles.h"

#include "VesloraLinux/System/LostErrors.h"
#include "VesloraLinux/System/PosixFolder.h"
#include "VesloraLinux/System/PosixReading.h"
#include "VesloraLinux/System/PosixReplacing.h"
#include "VesloraLinux/System/PosixWriting.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <climits>
#include <cstdlib>

namespace veslora {
namespace {

using PosixReading::lastError;
using PosixWriting::openPlace;
using PosixWriting::Place;

std::optional<std::string> realPath(const std::string& path) {
    char resolved[PATH_MAX];
    return realpath(path.c_str(), resolved) != nullptr ? std::optional<std::string>(resolved) : std::nullopt;
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
    if (const auto target = PosixReading::linkTarget(AT_FDCWD, path.c_str())) {
        return resolveMissing(target->front() == '/' ? *target : parent + "/" + *target, roundsLeft - 1);
    }
    const auto resolvedParent = resolveMissing(parent, roundsLeft - 1);
    if (!resolvedParent) {
        return std::nullopt;
    }
    return (*resolvedParent == "/" ? "" : *resolvedParent) + path.substr(slash);
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

OpenedFolder PosixFiles::openFolder(const std::string& path) {
    return PosixFolder::openAt(AT_FDCWD, path);
}

ReadResult PosixFiles::read(const std::string& path, const ReadOptions& options) {
    return PosixReading::read(AT_FDCWD, path.c_str(), options);
}

std::unique_ptr<FileReader> PosixFiles::open(const std::string& path) {
    return PosixReading::open(AT_FDCWD, path.c_str());
}

std::optional<FileStat> PosixFiles::stat(const std::string& path, Links links) {
    return PosixReading::stat(AT_FDCWD, path.c_str(), links);
}

std::optional<std::vector<std::string>> PosixFiles::list(const std::string& directory) {
    const FileDescriptor folder(openat(AT_FDCWD, directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!folder) {
        LostErrors::tell("open", AT_FDCWD, directory.c_str());
        return std::nullopt;
    }
    LostErrors::forget("open", AT_FDCWD, directory.c_str());
    return PosixReading::list(folder.value());
}

std::string PosixFiles::resolve(const std::string& path) {
    constexpr int mostRounds = 64;
    return resolveMissing(path, mostRounds).value_or(path);
}

bool PosixFiles::isExecutable(const std::string& path) {
    return PosixReading::isExecutable(AT_FDCWD, path.c_str(), Links::follow);
}

std::error_code PosixFiles::write(const std::string& path, const std::string& bytes,
                                  const WriteOptions& options) {
    Place place;
    const std::error_code error = openPlace(path, place);
    return error ? error
                 : PosixWriting::write(place.folder.value(), place.name, bytes, options,
                                       PassingEntry::inUsersFolder);
}

std::error_code PosixFiles::replaceIfUnchanged(const std::string& path,
                                               const std::optional<std::string>& expected,
                                               const std::string& bytes) {
    return PosixReplacing::replace(path, expected, bytes);
}

std::error_code PosixFiles::removeIfUnchanged(const std::string& path, const std::string& expected) {
    return PosixReplacing::remove(path, expected);
}

void PosixFiles::sweepLeftovers(const std::string& path) {
    PosixReplacing::sweep(path);
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
    const std::error_code error = openPlace(path, place);
    return error ? error
                 : PosixWriting::makeLink(target, place.folder.value(), place.name,
                                          PassingEntry::inUsersFolder);
}

} // namespace veslora
