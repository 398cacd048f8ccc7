// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/SupportDirectory.h"

#include "VesloraCore/SupportNames.h"

#include <tuple>
#include <utility>

namespace veslora {

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

std::error_code SupportDirectory::createFolder(std::string_view name) {
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
        std::ignore = m_files.write(pathOf(SupportNames::heartbeat), beat, options);
        return;
    }
    m_files.makeDirectory(m_runtime, directoryMode);
    const std::string target = m_runtime + "/" + std::string(SupportNames::heartbeat);
    if (m_files.write(target, beat, options)) {
        return;
    }
    const auto link = m_files.stat(pathOf(SupportNames::heartbeat), Links::refuse);
    if (!link || !link->isLink ||
        m_files.resolve(pathOf(SupportNames::heartbeat)) != m_files.resolve(target)) {
        create();
        m_files.makeLink(target, pathOf(SupportNames::heartbeat));
    }
}

void SupportDirectory::writeProcess(std::int32_t pid) {
    std::ignore =
        m_files.write(pathOf(SupportNames::processId), std::to_string(pid) + "\n", {.mode = fileMode});
}

void SupportDirectory::removeSigns() {
    if (hasRuntime()) {
        m_files.remove(m_runtime + "/" + std::string(SupportNames::heartbeat));
    }
    m_files.remove(pathOf(SupportNames::heartbeat));
    m_files.remove(pathOf(SupportNames::processId));
}

} // namespace veslora
