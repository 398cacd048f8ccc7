// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Spool/SupportDirectory.h"

#include "VesloraCore/Agents/Hooks/SupportNames.h"
#include "VesloraUI/Platform/Logs.h"
#include "VesloraUI/Platform/Processes.h"

#include <utility>

namespace veslora {

SupportDirectory::SupportDirectory(Files& files, std::string path, std::string runtime)
    : m_files(files), m_path(std::move(path)), m_runtime(std::move(runtime)) {}

std::error_code SupportDirectory::create() {
    if (const auto error = m_files.makeDirectory(m_path, directoryMode)) {
        return error;
    }
    const OpenedFolder folder = open();
    if (!folder) {
        return folder.error;
    }
    // An older folder, or one that somebody else made, is closed to others too.
    const auto found = folder->stat();
    return found && found->mode != directoryMode ? folder->setMode(directoryMode) : std::error_code();
}

OpenedFolder SupportDirectory::createFolder(std::string_view name) {
    if (const auto error = create()) {
        return {nullptr, error};
    }
    const OpenedFolder folder = open();
    if (!folder) {
        return {nullptr, folder.error};
    }
    if (const auto error = folder->makeFolder(std::string(name), directoryMode)) {
        return {nullptr, error};
    }
    return folder->openFolder(std::string(name));
}

OpenedFolder SupportDirectory::openFolder(std::string_view name) const {
    OpenedFolder folder = open();
    return folder ? folder->openFolder(std::string(name)) : std::move(folder);
}

std::shared_ptr<SupportDirectory::Presence> SupportDirectory::show(const Processes& processes,
                                                                   Timestamp now) {
    auto presence = m_presence.lock();
    if (presence) {
        writeHeartbeat(now);
        return presence;
    }
    presence = std::make_shared<Presence>(*this);
    m_presence = presence;
    create();
    writeProcess(processes);
    writeHeartbeat(now);
    arrangeExit();
    return presence;
}

void SupportDirectory::writeHeartbeat(Timestamp now) {
    // Shorter than the time between two ticks, longer than one tick takes; a clock set back counts as new.
    constexpr double sameTick = 1;
    if (m_lastBeat && now >= *m_lastBeat && now - *m_lastBeat < sameTick) {
        return;
    }
    const auto error = writeBeat(std::to_string(static_cast<std::int64_t>(now)));
    if (m_beatTrouble.begins(error)) {
        qCWarning(Logs::spool, "can't write the heartbeat for %s: %s", m_path.c_str(),
                  error.message().c_str());
    }
    m_lastBeat = error ? std::nullopt : std::optional(now);
}

std::error_code SupportDirectory::writeBeat(const std::string& beat) {
    const WriteOptions options{.mode = fileMode};
    const std::string name(SupportNames::heartbeat);
    if (!hasRuntime()) {
        create();
        const OpenedFolder folder = open();
        return folder ? folder->write(name, beat, options) : folder.error;
    }
    m_files.makeDirectory(m_runtime, directoryMode);
    const OpenedFolder runtime = m_files.openFolder(m_runtime);
    const std::error_code error = runtime ? runtime->write(name, beat, options) : runtime.error;
    return error ? error : linkTo(m_runtime + "/" + name);
}

std::error_code SupportDirectory::linkTo(const std::string& beat) {
    const std::string name(SupportNames::heartbeat);
    OpenedFolder folder = open();
    if (folder && folder->linkTarget(name) == beat) {
        return {};
    }
    create();
    folder = open();
    return folder ? folder->makeLink(beat, name) : folder.error;
}

void SupportDirectory::writeProcess(const Processes& processes) {
    const OpenedFolder folder = open();
    const std::string name(SupportNames::processId);
    const std::string text = std::to_string(processes.ownId()) + "\n" + processes.ownNamespace() + "\n";
    const std::error_code error = folder ? folder->write(name, text, {.mode = fileMode}) : std::error_code();
    if (error) {
        qCWarning(Logs::spool, "can't write %s: %s", pathOf(name).c_str(), error.message().c_str());
        // One that names a process of long ago would send every script away.
        folder->remove(name);
    }
}

void SupportDirectory::arrangeExit() {
    const auto arrange = [this](const OpenedFolder& folder, std::string_view name) {
        if (folder) {
            m_atExit.push_back(folder->removeAtExit(std::string(name)));
        }
    };
    if (hasRuntime()) {
        arrange(m_files.openFolder(m_runtime), SupportNames::heartbeat);
    }
    const OpenedFolder folder = open();
    arrange(folder, SupportNames::heartbeat);
    arrange(folder, SupportNames::processId);
}

void SupportDirectory::removeSigns() {
    m_atExit.clear();
    const OpenedFolder runtime = hasRuntime() ? m_files.openFolder(m_runtime) : OpenedFolder{};
    if (runtime) {
        runtime->remove(std::string(SupportNames::heartbeat));
    }
    if (const OpenedFolder folder = open()) {
        folder->remove(std::string(SupportNames::heartbeat));
        folder->remove(std::string(SupportNames::processId));
    }
    m_lastBeat.reset();
}

} // namespace veslora
