// SPDX-License-Identifier: MIT
#include "MediaAdapter/ChosenPlayerFile.h"

#include "MediaAdapter/Descriptor.h"
#include "MediaAdapter/PlayerNames.h"

#include <fcntl.h>
#include <stdio.h>
#include <sys/stat.h>

#include <array>
#include <cerrno>

namespace veslora {
namespace {

constexpr const char* folderName = "veslora";
constexpr const char* fileName = "media-player";
/// The longest name that a bus allows.
constexpr std::size_t longestName = 255;

bool isOnlyOurs(const struct stat& status) {
    return status.st_uid == geteuid() && (status.st_mode & (S_IRWXG | S_IRWXO)) == 0;
}

/// The runtime directory of another user is what the variable names under `su`.
bool isOurs(int folder) {
    struct stat status {};
    return fstat(folder, &status) == 0 && status.st_uid == geteuid();
}

bool writeAll(int file, const std::string& text) {
    return write(file, text.data(), text.size()) == static_cast<ssize_t>(text.size());
}

} // namespace

/// Nothing in the folder is reached by any other way than through what this gives; -1 where it can't be used.
int ChosenPlayerFile::openFolder() const {
    if (!m_runtimeDirectory.starts_with('/')) {
        return -1;
    }
    const Descriptor runtime(open(m_runtimeDirectory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!runtime || !isOurs(runtime.value())) {
        return -1;
    }
    mkdirat(runtime.value(), folderName, S_IRWXU);
    const int folder = openat(runtime.value(), folderName, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    struct stat status {};
    if (folder >= 0 && (fstat(folder, &status) != 0 || !isOnlyOurs(status))) {
        close(folder);
        return -1;
    }
    return folder;
}

bool ChosenPlayerFile::store(const std::string& name) const {
    const Descriptor folder(openFolder());
    if (!folder) {
        return false;
    }
    if (name.empty()) {
        return unlinkat(folder.value(), fileName, 0) == 0 || errno == ENOENT;
    }
    // Nobody else gives this name, so that two of us do not write into one file.
    const std::string passing = std::string(".") + fileName + "-" + std::to_string(getpid());
    unlinkat(folder.value(), passing.c_str(), 0);
    const Descriptor file(openat(folder.value(), passing.c_str(),
                                 O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, S_IRUSR | S_IWUSR));
    const bool isStored = file && writeAll(file.value(), name) &&
                          renameat(folder.value(), passing.c_str(), folder.value(), fileName) == 0;
    if (file && !isStored) {
        unlinkat(folder.value(), passing.c_str(), 0);
    }
    return isStored;
}

std::optional<std::string> ChosenPlayerFile::name() const {
    const Descriptor folder(openFolder());
    if (!folder) {
        return std::nullopt;
    }
    const Descriptor file(
        openat(folder.value(), fileName, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    struct stat status {};
    if (!file || fstat(file.value(), &status) != 0 || !S_ISREG(status.st_mode) || !isOnlyOurs(status)) {
        return std::nullopt;
    }
    std::array<char, longestName + 1> bytes{};
    const ssize_t length = read(file.value(), bytes.data(), bytes.size());
    if (length <= 0 || static_cast<std::size_t>(length) > longestName) {
        return std::nullopt;
    }
    std::string text(bytes.data(), static_cast<std::size_t>(length));
    return PlayerNames::isPlayer(text) ? std::optional(std::move(text)) : std::nullopt;
}

} // namespace veslora
