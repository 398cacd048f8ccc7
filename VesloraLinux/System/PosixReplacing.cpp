// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/PosixReplacing.h"

#include "VesloraLinux/System/FileAttributes.h"
#include "VesloraLinux/System/HeldFile.h"
#include "VesloraLinux/System/LostErrors.h"
#include "VesloraLinux/System/PosixReading.h"
#include "VesloraLinux/System/PosixWriting.h"
#include "VesloraUI/Platform/FileRefusal.h"
#include "VesloraUI/Platform/Logs.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

namespace veslora::PosixReplacing {
namespace {

using PosixReading::lastError;
using PosixWriting::Place;

/// Takes hold of the file that is to go, if it is as it was read and may be replaced at all.
std::error_code hold(const Place& place, const std::string& expected, HeldFile& held) {
    if (const std::error_code error = held.hold(place.folder.value(), place.name.c_str())) {
        return error;
    }
    if (held.status().st_nlink > 1) {
        return FileRefusal::hasSecondName;
    }
    return held.holds(expected) ? std::error_code() : make_error_code(FileRefusal::changed);
}

bool isUnsupported(int error) {
    return error == EINVAL || error == ENOSYS || error == ENOTSUP;
}

/// One attempt to put a new file into a place or to take one out of it.
class Attempt {
  public:
    Attempt(const Place& place, const Circumstances& circumstances)
        : m_place(place), m_circumstances(circumstances), m_folder(place.folder.value()),
          m_entry(m_folder, PassingEntry::inUsersFolder) {}

    std::error_code makeNew(const std::string& bytes);
    std::error_code replace(const std::string& expected, const std::string& bytes);
    std::error_code remove(const std::string& expected);

  private:
    std::error_code write(const std::string& bytes, const HeldFile* former);
    std::error_code exchangeOrRename(const HeldFile& held, const std::string& expected);
    std::error_code takeAway(const HeldFile& held, const std::string& expected);
    std::error_code giveBack(const std::string& bytes);
    /// Keeps what lies under the passing name, since it is another program's.
    void keep();

    /// True once it is done; else errno tells.
    bool rename(const char* from, const char* to, unsigned flags) const;
    [[nodiscard]] bool isAtPlace(const HeldFile& held, const std::string& text) const {
        return held.isAt(m_folder, m_place.name.c_str(), text);
    }
    [[nodiscard]] bool isAside(const HeldFile& held, const std::string& text) const {
        return held.isAt(m_folder, m_entry.name(), text);
    }

    const Place& m_place;
    const Circumstances& m_circumstances;
    int m_folder;
    PassingEntry m_entry;
    HeldFile m_new;
    bool m_isExchanged = false;
};

bool Attempt::rename(const char* from, const char* to, unsigned flags) const {
    if (!m_circumstances.canExchange) {
        errno = EINVAL;
        return false;
    }
    return renameat2(m_folder, from, m_folder, to, flags) == 0;
}

std::error_code Attempt::write(const std::string& bytes, const HeldFile* former) {
    FileDescriptor file;
    if (const std::error_code error = PosixWriting::makeFile(m_entry, file)) {
        return error;
    }
    flock(file.value(), LOCK_EX | LOCK_NB);
    if (const std::error_code error = PosixWriting::fill(
            file.value(), bytes, former != nullptr ? &former->status() : nullptr, {.sync = Sync::yes})) {
        return error;
    }
    if (former != nullptr) {
        if (const std::error_code error = FileAttributes::copy(former->descriptor(), file.value())) {
            return error;
        }
    }
    if (file.close() != 0) {
        return lastError();
    }
    // Held for reading alone from now on, so that nobody but another program can be its writer.
    return m_new.hold(m_folder, m_entry.name());
}

std::error_code Attempt::makeNew(const std::string& bytes) {
    if (const std::error_code error = write(bytes, nullptr)) {
        return error;
    }
    m_circumstances.before(Step::exchanging);
    const char* name = m_place.name.c_str();
    if (rename(m_entry.name(), name, RENAME_NOREPLACE)) {
        m_entry.giveUp();
    } else if (errno == EEXIST) {
        return FileRefusal::changed;
    } else if (!isUnsupported(errno)) {
        return lastError();
    } else if (linkat(m_folder, m_entry.name(), m_folder, name, 0) != 0) {
        // The second way to make a name without replacing one; there are file systems that have neither.
        if (errno == EEXIST || PosixReading::stat(m_folder, name, Links::refuse)) {
            return FileRefusal::changed;
        }
        if (const std::error_code error = m_entry.moveTo(m_place.name)) {
            return error;
        }
    }
    fsync(m_folder);
    return {};
}

std::error_code Attempt::replace(const std::string& expected, const std::string& bytes) {
    HeldFile held;
    if (const std::error_code error = hold(m_place, expected, held)) {
        return error;
    }
    if (const std::error_code error = write(bytes, &held)) {
        return error;
    }
    m_circumstances.before(Step::looking);
    if (!isAtPlace(held, expected) || held.isBeingWritten()) {
        return FileRefusal::changed;
    }
    m_circumstances.before(Step::exchanging);
    if (const std::error_code error = exchangeOrRename(held, expected)) {
        return error;
    }
    if (m_isExchanged) {
        m_circumstances.before(Step::comparing);
        const bool isSame = isAside(held, expected) && !held.isBeingWritten();
        m_circumstances.before(Step::removing);
        // Nobody can open it any more once it has neither its name nor a writer, so this look is the last.
        if (!isSame || !isAside(held, expected)) {
            return giveBack(bytes);
        }
    }
    fsync(m_folder);
    return {};
}

std::error_code Attempt::exchangeOrRename(const HeldFile& held, const std::string& expected) {
    const char* name = m_place.name.c_str();
    if (rename(m_entry.name(), name, RENAME_EXCHANGE)) {
        m_isExchanged = true;
        return {};
    }
    if (errno == ENOENT) {
        return FileRefusal::changed;
    }
    if (!isUnsupported(errno)) {
        return lastError();
    }
    return isAtPlace(held, expected) ? m_entry.moveTo(m_place.name) : FileRefusal::changed;
}

/// What lies aside is another program's edit. It goes back, and what comes out for it must be ours; if not, a
/// third edit came, which is the newest and belongs into the place.
std::error_code Attempt::giveBack(const std::string& bytes) {
    const char* name = m_place.name.c_str();
    m_circumstances.before(Step::givingBack);
    if (!rename(m_entry.name(), name, RENAME_EXCHANGE)) {
        // Somebody removed ours meanwhile, so nothing is in the way.
        if (rename(m_entry.name(), name, RENAME_NOREPLACE)) {
            m_entry.giveUp();
        } else {
            keep();
        }
        return FileRefusal::changed;
    }
    m_circumstances.before(Step::checking);
    if (!isAside(m_new, bytes) || m_new.isBeingWritten()) {
        rename(m_entry.name(), name, RENAME_EXCHANGE);
        keep();
    }
    return FileRefusal::changed;
}

void Attempt::keep() {
    const std::string digits = std::string(m_entry.name()).substr(PassingEntry::inUsersFolder.size());
    const std::string kept = m_place.name + ".veslora-kept." + digits;
    if (rename(m_entry.name(), kept.c_str(), RENAME_NOREPLACE)) {
        qCInfo(Logs::system, "kept another program's edit of %s as %s", m_place.name.c_str(), kept.c_str());
    } else {
        LostErrors::tell("rename", m_folder, m_entry.name());
    }
    m_entry.giveUp();
}

std::error_code Attempt::remove(const std::string& expected) {
    HeldFile held;
    if (const std::error_code error = hold(m_place, expected, held)) {
        return error;
    }
    m_circumstances.before(Step::looking);
    if (!isAtPlace(held, expected) || held.isBeingWritten()) {
        return FileRefusal::changed;
    }
    m_circumstances.before(Step::exchanging);
    return takeAway(held, expected);
}

std::error_code Attempt::takeAway(const HeldFile& held, const std::string& expected) {
    const char* name = m_place.name.c_str();
    const std::error_code error =
        m_entry.make([this, name](int, const char* aside) { return rename(name, aside, RENAME_NOREPLACE); });
    if (error == std::errc::no_such_file_or_directory) {
        return FileRefusal::changed;
    }
    if (error) {
        if (!isUnsupported(error.value())) {
            return error;
        }
        if (!isAtPlace(held, expected)) {
            return FileRefusal::changed;
        }
        return unlinkat(m_folder, name, 0) == 0 ? std::error_code() : lastError();
    }
    m_circumstances.before(Step::comparing);
    const bool isSame = isAside(held, expected) && !held.isBeingWritten();
    m_circumstances.before(Step::removing);
    if (isSame && isAside(held, expected)) {
        return {};
    }
    m_circumstances.before(Step::givingBack);
    if (rename(m_entry.name(), name, RENAME_NOREPLACE)) {
        m_entry.giveUp();
    } else {
        keep();
    }
    return FileRefusal::changed;
}

} // namespace

std::error_code replace(const std::string& path, const std::optional<std::string>& expected,
                        const std::string& bytes, const Circumstances& circumstances) {
    Place place;
    if (const std::error_code error = openPlace(path, place)) {
        return error;
    }
    Attempt attempt(place, circumstances);
    return expected ? attempt.replace(*expected, bytes) : attempt.makeNew(bytes);
}

std::error_code remove(const std::string& path, const std::string& expected,
                       const Circumstances& circumstances) {
    Place place;
    if (const std::error_code error = openPlace(path, place)) {
        return error;
    }
    return Attempt(place, circumstances).remove(expected);
}

void sweep(const std::string& path) {
    Place place;
    if (openPlace(path, place)) {
        LostErrors::tell("sweep the folder of", AT_FDCWD, path.c_str());
        return;
    }
    const int folder = place.folder.value();
    const auto names = PosixReading::list(folder);
    for (const std::string& name : names.value_or(std::vector<std::string>())) {
        if (!PassingEntry::isPassing(name, PassingEntry::inUsersFolder)) {
            continue;
        }
        const FileDescriptor file(
            openat(folder, name.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
        struct stat status {};
        // A program that is still at work with it holds a lock.
        if (file && fstat(file.value(), &status) == 0 && S_ISREG(status.st_mode) &&
            status.st_uid == geteuid() && flock(file.value(), LOCK_EX | LOCK_NB) == 0 &&
            unlinkat(folder, name.c_str(), 0) != 0) {
            LostErrors::tell("remove", folder, name.c_str());
        }
    }
}

} // namespace veslora::PosixReplacing
