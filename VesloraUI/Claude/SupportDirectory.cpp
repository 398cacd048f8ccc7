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

std::shared_ptr<SupportDirectory::Presence> SupportDirectory::show(std::int32_t pid, Timestamp now) {
    auto presence = m_presence.lock();
    if (!presence) {
        presence = std::make_shared<Presence>(*this);
        m_presence = presence;
        writeProcess(pid);
    }
    writeHeartbeat(now);
    return presence;
}

void SupportDirectory::writeHeartbeat(Timestamp now) {
    // Shorter than the time between two ticks, longer than one tick takes; a clock set back counts as new.
    constexpr double sameTick = 1;
    if (m_lastBeat && now >= *m_lastBeat && now - *m_lastBeat < sameTick) {
        return;
    }
    const auto error = writeBeat(std::to_string(static_cast<std::int64_t>(now)));
    m_lastBeat = error ? std::nullopt : std::optional(now);
}

std::error_code SupportDirectory::writeBeat(const std::string& beat) {
    const WriteOptions options{.mode = fileMode};
    if (!hasRuntime()) {
        create();
        return m_files.write(pathOf(SupportNames::heartbeat), beat, options);
    }
    m_files.makeDirectory(m_runtime, directoryMode);
    const std::string target = m_runtime + "/" + std::string(SupportNames::heartbeat);
    if (const auto error = m_files.write(target, beat, options)) {
        return error;
    }
    const auto link = m_files.stat(pathOf(SupportNames::heartbeat), Links::refuse);
    if (!link || !link->isLink ||
        m_files.resolve(pathOf(SupportNames::heartbeat)) != m_files.resolve(target)) {
        create();
        return m_files.makeLink(target, pathOf(SupportNames::heartbeat));
    }
    return {};
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
    m_lastBeat.reset();
}

} // namespace veslora
