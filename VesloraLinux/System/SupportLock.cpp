// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/SupportLock.h"

#include "VesloraCore/Text/Words.h"
#include "VesloraLinux/System/PosixReading.h"

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>

namespace veslora {
namespace {

using PosixReading::lastError;

constexpr std::uint32_t privateMode = 0700;

/// What is wrong, in words that help more than the system's where there are any.
std::string reasonFor(Files& files, const std::string& directory, const std::error_code& error) {
    const auto found = files.stat(directory, Links::refuse);
    if (found && found->isLink) {
        return translatable("SupportLock", "it is a link");
    }
    if (found && !found->isDirectory) {
        return translatable("SupportLock", "it is not a folder");
    }
    if (found && !found->isOurs) {
        return translatable("SupportLock", "it belongs to another user");
    }
    return error.message();
}

std::error_code makePrivate(Files& files, const std::string& directory) {
    if (const auto error = files.makeDirectory(directory, privateMode)) {
        return error;
    }
    const OpenedFolder folder = files.openFolder(directory);
    if (!folder) {
        return folder.error;
    }
    const auto found = folder->stat();
    return found && found->mode != privateMode ? folder->setMode(privateMode) : std::error_code();
}

/// Tries it with a file as large as those that the hooks leave there: a full disk still takes empty ones.
std::error_code keepSomething(Files& files, const std::string& directory) {
    constexpr std::size_t size = 4096;
    const std::string name = "probe";
    const OpenedFolder folder = files.openFolder(directory);
    if (!folder) {
        return folder.error;
    }
    const std::error_code error = folder->write(name, std::string(size, ' '), {.mode = 0600});
    return error ? error : folder->remove(name);
}

} // namespace

SupportLock::Attempt SupportLock::take(Files& files, const std::string& directory) {
    const auto unusable = [&](const std::error_code& error) {
        return Unusable{reasonFor(files, directory, error)};
    };
    if (const auto error = makePrivate(files, directory)) {
        return unusable(error);
    }
    FileDescriptor folder(open(directory.c_str(), O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    constexpr int flags = O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY;
    FileDescriptor lock(folder ? openat(folder.value(), "lock", flags, 0600) : -1);
    if (!lock) {
        return unusable(lastError());
    }
    if (flock(lock.value(), LOCK_EX | LOCK_NB) != 0) {
        return errno == EWOULDBLOCK ? Attempt(Held{}) : Attempt(unusable(lastError()));
    }
    if (const auto error = keepSomething(files, directory)) {
        return unusable(error);
    }
    return SupportLock(std::move(folder), std::move(lock));
}

} // namespace veslora
