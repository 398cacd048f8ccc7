// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/PosixFolder.h"

#include "VesloraCore/Text/PathText.h"
#include "VesloraLinux/System/ExitRemovals.h"
#include "VesloraLinux/System/PosixReading.h"
#include "VesloraLinux/System/PosixWriting.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <utility>

namespace veslora {

using PathText::isName;
using PosixReading::lastError;

namespace {

std::error_code badName() {
    return std::make_error_code(std::errc::invalid_argument);
}

} // namespace

OpenedFolder PosixFolder::openAt(int folder, const std::string& path) {
    // After a slash at the end, or for "..", the system would follow a link in spite of O_NOFOLLOW.
    if (!isName(path.substr(path.rfind('/') + 1))) {
        return {nullptr, badName()};
    }
    FileDescriptor opened(openat(folder, path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    struct stat status {};
    if (!opened || fstat(opened.value(), &status) != 0) {
        return {nullptr, lastError()};
    }
    if (status.st_uid != geteuid()) {
        return {nullptr, std::make_error_code(std::errc::permission_denied)};
    }
    return {std::make_unique<PosixFolder>(std::move(opened)), {}};
}

std::optional<FileStat> PosixFolder::stat() {
    struct stat status {};
    return fstat(m_folder.value(), &status) == 0 ? std::optional(PosixReading::fileStat(status))
                                                 : std::nullopt;
}

std::error_code PosixFolder::setMode(std::uint32_t mode) {
    return fchmod(m_folder.value(), mode) == 0 ? std::error_code() : lastError();
}

std::optional<std::vector<std::string>> PosixFolder::list() {
    return PosixReading::list(m_folder.value());
}

std::optional<std::vector<std::string>> PosixFolder::listSome(std::size_t most) {
    return PosixReading::list(m_folder.value(), most);
}

std::optional<FileStat> PosixFolder::stat(const std::string& name) {
    return isName(name) ? PosixReading::stat(m_folder.value(), name.c_str(), Links::refuse) : std::nullopt;
}

ReadResult PosixFolder::read(const std::string& name, const ReadOptions& options) {
    if (!isName(name)) {
        return {{}, badName()};
    }
    return PosixReading::read(m_folder.value(), name.c_str(),
                              {.links = Links::refuse, .owners = options.owners, .cap = options.cap});
}

std::unique_ptr<FileReader> PosixFolder::open(const std::string& name) {
    return isName(name) ? PosixReading::open(m_folder.value(), name.c_str()) : nullptr;
}

std::error_code PosixFolder::write(const std::string& name, const std::string& bytes,
                                   const WriteOptions& options) {
    return isName(name)
               ? PosixWriting::write(m_folder.value(), name, bytes, options, PassingEntry::inOurFolder)
               : badName();
}

std::error_code PosixFolder::remove(const std::string& name) {
    if (!isName(name)) {
        return badName();
    }
    return unlinkat(m_folder.value(), name.c_str(), 0) == 0 ? std::error_code() : lastError();
}

bool PosixFolder::isExecutable(const std::string& name) {
    return isName(name) && PosixReading::isExecutable(m_folder.value(), name.c_str(), Links::refuse);
}

std::error_code PosixFolder::makeLink(const std::string& target, const std::string& name) {
    return isName(name) ? PosixWriting::makeLink(target, m_folder.value(), name, PassingEntry::inOurFolder)
                        : badName();
}

std::optional<std::string> PosixFolder::linkTarget(const std::string& name) {
    return isName(name) ? PosixReading::linkTarget(m_folder.value(), name.c_str()) : std::nullopt;
}

std::unique_ptr<RemovalAtExit> PosixFolder::removeAtExit(const std::string& name) {
    return isName(name) ? ExitRemovals::add(m_folder.value(), name) : nullptr;
}

OpenedFolder PosixFolder::openFolder(const std::string& name) {
    return isName(name) ? openAt(m_folder.value(), name) : OpenedFolder{nullptr, badName()};
}

std::error_code PosixFolder::makeFolder(const std::string& name, std::uint32_t mode) {
    if (!isName(name)) {
        return badName();
    }
    const bool isNew = mkdirat(m_folder.value(), name.c_str(), mode) == 0;
    if (!isNew && errno != EEXIST) {
        return lastError();
    }
    const OpenedFolder made = openAt(m_folder.value(), name);
    if (!made) {
        return made.error;
    }
    // The user's mask may have taken away what the caller asked for.
    return isNew ? made->setMode(mode) : std::error_code();
}

} // namespace veslora
