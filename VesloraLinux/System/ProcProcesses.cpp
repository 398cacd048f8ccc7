// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/ProcProcesses.h"

#include "VesloraCore/Text/PathText.h"
#include "VesloraLinux/System/FileBeginning.h"
#include "VesloraLinux/System/ProcessTree.h"

#include <dirent.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <climits>
#include <csignal>
#include <memory>
#include <utility>

namespace veslora {

namespace {

/// What the kernel adds to the path of a file or folder that has been removed or replaced.
constexpr std::string_view removedMark = " (deleted)";

/// The ids of a folder's entries that are numbers, rising. Empty when it can't be listed.
std::vector<std::int32_t> processIdsIn(const std::string& root) {
    const auto close = [](DIR* directory) { closedir(directory); };
    const std::unique_ptr<DIR, decltype(close)> directory(opendir(root.c_str()), close);
    std::vector<std::int32_t> ids;
    while (const dirent* entry = directory ? readdir(directory.get()) : nullptr) {
        const std::string_view name = entry->d_name;
        std::int32_t id = 0;
        const auto read = std::from_chars(name.data(), name.data() + name.size(), id);
        if (read.ec == std::errc() && read.ptr == name.data() + name.size() && id > 0) {
            ids.push_back(id);
        }
    }
    std::ranges::sort(ids);
    return ids;
}

/// `commandLine` is as the kernel tells it: every argument has a zero byte behind it.
std::string firstArgumentIn(std::string_view commandLine) {
    const std::size_t name = commandLine.find('\0');
    if (name == std::string_view::npos) {
        return {};
    }
    commandLine.remove_prefix(name + 1);
    return std::string(commandLine.substr(0, commandLine.find('\0')));
}

} // namespace

ProcProcesses::ProcProcesses(std::string root) : m_root(std::move(root)) {}

std::int32_t ProcProcesses::ownId() const {
    return getpid();
}

std::string ProcProcesses::ownNamespace() const {
    return linkOf(getpid(), "ns/pid").value_or("");
}

bool ProcProcesses::isAlive(std::int32_t pid) const {
    // Ids below 1 would ask about whole groups of processes.
    if (pid < 1 || kill(pid, 0) != 0) {
        return false;
    }
    const auto stat = ProcessTree::statOf(pid);
    // Where /proc hides a process that may be signalled, the signal's word counts.
    return !stat || (stat->state != 'Z' && stat->state != 'X');
}

std::string ProcProcesses::pathOf(std::int32_t pid, std::string_view file) const {
    return m_root + "/" + std::to_string(pid) + "/" + std::string(file);
}

/// Where a link of a process leads, without the mark of what is gone.
std::optional<std::string> ProcProcesses::linkOf(std::int32_t pid, std::string_view file) const {
    char target[PATH_MAX];
    const ssize_t length = readlink(pathOf(pid, file).c_str(), target, sizeof target);
    if (length <= 0 || static_cast<std::size_t>(length) == sizeof target) {
        return std::nullopt;
    }
    std::string_view path(target, static_cast<std::size_t>(length));
    if (path.ends_with(removedMark)) {
        path.remove_suffix(removedMark.size());
    }
    return std::string(path);
}

RunningProcess ProcProcesses::withDetails(std::int32_t pid, std::string executable) const {
    return {pid, std::move(executable),
            firstArgumentIn(fileBeginning(pathOf(pid, "cmdline"), commandLineCap)), linkOf(pid, "cwd")};
}

std::optional<RunningProcess> ProcProcesses::processOf(std::int32_t pid) const {
    auto executable = pid > 0 ? linkOf(pid, "exe") : std::nullopt;
    return executable ? std::optional(withDetails(pid, std::move(*executable))) : std::nullopt;
}

std::vector<RunningProcess> ProcProcesses::processesNamed(std::string_view name) const {
    std::vector<RunningProcess> found;
    for (const std::int32_t pid : processIdsIn(m_root)) {
        auto executable = linkOf(pid, "exe");
        if (executable && PathText::lastComponent(*executable) == name) {
            found.push_back(withDetails(pid, std::move(*executable)));
        }
    }
    return found;
}

std::optional<std::string> ProcProcesses::environmentOf(std::int32_t pid, std::string_view name) const {
    // The kernel limits all arguments and variables together to a quarter of the stack.
    constexpr std::size_t cap = std::size_t{6} << 20;
    const std::string all = pid > 0 ? fileBeginning(pathOf(pid, "environ"), cap) : std::string();
    const std::string start = std::string(name) + "=";
    for (std::string_view rest = all; !rest.empty();) {
        const std::string_view entry = rest.substr(0, rest.find('\0'));
        if (entry.starts_with(start)) {
            return std::string(entry.substr(start.size()));
        }
        rest.remove_prefix(std::min(entry.size() + 1, rest.size()));
    }
    return std::nullopt;
}

} // namespace veslora
