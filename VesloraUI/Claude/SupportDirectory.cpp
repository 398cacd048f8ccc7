// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/SupportDirectory.h"

#include <utility>

namespace veslora {

namespace {
constexpr auto heartbeatName = "heartbeat";
constexpr auto processName = "pid";
} // namespace

SupportDirectory::SupportDirectory(Files& files, std::string path, std::string runtime)
    : m_files(files), m_path(std::move(path)), m_runtime(std::move(runtime)) {}

std::error_code SupportDirectory::create() {
    if (const auto error = m_files.makeDirectory(m_path, directoryMode)) {
        return error;
    }
    // An older folder, or one that somebody else made, is closed to others too.
    const auto found = m_files.stat(m_path, Links::follow);
    return found && found->mode != directoryMode ? m_files.setMode(m_path, directoryMode) : std::error_code();
}

std::error_code SupportDirectory::createFolder(const std::string& name) {
    if (const auto error = create()) {
        return error;
    }
    return m_files.makeDirectory(pathOf(name), directoryMode);
}

void SupportDirectory::writeHeartbeat(Timestamp now) {
    const std::string beat = std::to_string(static_cast<std::int64_t>(now));
    const WriteOptions options{.mode = fileMode};
    if (!hasRuntime()) {
        create();
        std::ignore = m_files.write(pathOf(heartbeatName), beat, options);
        return;
    }
    m_files.makeDirectory(m_runtime, directoryMode);
    const std::string target = m_runtime + "/" + heartbeatName;
    if (m_files.write(target, beat, options)) {
        return;
    }
    const auto link = m_files.stat(pathOf(heartbeatName), Links::refuse);
    if (!link || !link->isLink || m_files.resolve(pathOf(heartbeatName)) != m_files.resolve(target)) {
        create();
        m_files.makeLink(target, pathOf(heartbeatName));
    }
}

void SupportDirectory::writeProcess(std::int32_t pid) {
    std::ignore = m_files.write(pathOf(processName), std::to_string(pid) + "\n", {.mode = fileMode});
}

void SupportDirectory::removeSigns() {
    if (hasRuntime()) {
        m_files.remove(m_runtime + "/" + heartbeatName);
    }
    m_files.remove(pathOf(heartbeatName));
    m_files.remove(pathOf(processName));
}

} // namespace veslora
