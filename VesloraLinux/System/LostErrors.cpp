// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/LostErrors.h"

#include "VesloraLinux/System/PosixReading.h"
#include "VesloraUI/Platform/Logs.h"
#include "VesloraUI/Platform/Trouble.h"

#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <climits>
#include <mutex>
#include <string>

namespace veslora::LostErrors {
namespace {

/// What fails now, under the operation and the path.
struct Known {
    std::mutex mutex;
    Troubles troubles;
    std::atomic<bool> isAny = false;
};

Known& known() {
    static Known known;
    return known;
}

std::string pathOf(int folder, const char* name) {
    if (folder == AT_FDCWD) {
        return name;
    }
    char path[PATH_MAX];
    const std::string link = "/proc/self/fd/" + std::to_string(folder);
    const ssize_t length = readlink(link.c_str(), path, sizeof path);
    const std::string opened(path, length > 0 ? static_cast<std::size_t>(length) : 0);
    return *name == '\0' ? opened : opened + "/" + name;
}

bool begins(const std::string& key, const std::error_code& error) {
    // A folder full of files that can't be read must not become a log, or a memory, without end.
    constexpr std::size_t most = 256;
    const std::lock_guard lock(known().mutex);
    Troubles& troubles = known().troubles;
    const bool isNew = (!error || troubles.size() < most) && troubles.begins(key, error);
    known().isAny = troubles.size() > 0;
    return isNew;
}

} // namespace

void tell(const char* operation, int folder, const char* name) {
    const std::error_code error = PosixReading::lastError();
    if (error.value() == ENOENT || error.value() == ENOTDIR || !Logs::system().isWarningEnabled()) {
        return;
    }
    const std::string path = pathOf(folder, name);
    if (begins(std::string(operation) + path, error)) {
        qCWarning(Logs::system, "can't %s %s: %s", operation, Logs::place(path).c_str(),
                  error.message().c_str());
    }
}

void forget(const char* operation, int folder, const char* name) {
    // Thousands of files are looked at in a round, and hardly ever does one of them fail.
    if (known().isAny) {
        begins(operation + pathOf(folder, name), {});
    }
}

} // namespace veslora::LostErrors
