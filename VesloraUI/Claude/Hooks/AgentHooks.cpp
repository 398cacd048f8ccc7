// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Hooks/AgentHooks.h"

#include "VesloraCore/Agents/Hooks/ConfigurationText.h"
#include "VesloraUI/Claude/Hooks/ConfigurationFile.h"
#include "VesloraUI/Claude/Spool/SupportDirectory.h"
#include "VesloraUI/Platform/Logs.h"

#include <utility>

namespace veslora {

namespace {

std::vector<std::string_view> scriptsOf(const AgentHookNames& names,
                                        const std::vector<std::string_view>& more) {
    std::vector<std::string_view> scripts{names.event, names.permission};
    scripts.insert(scripts.end(), more.begin(), more.end());
    return scripts;
}

} // namespace

AgentHooks::AgentHooks(Files& files, SupportDirectory& support, std::string configuration,
                       const AgentHookNames& names, const std::vector<std::string_view>& moreScripts)
    : m_files(files), m_support(support), m_scripts(support, scriptsOf(names, moreScripts)),
      m_configuration(std::move(configuration)), m_names(names) {}

ClaudeHooksInstaller::Commands AgentHooks::commands() const {
    return {.event = m_scripts.commandOf(m_names.event),
            .permission = m_scripts.commandOf(m_names.permission)};
}

AgentHooksState AgentHooks::state() {
    const auto stat = m_files.stat(m_configuration, Links::follow);
    if (!m_isRead || stat != m_stat) {
        m_stat = stat;
        readConfiguration();
    }
    const bool areInstalled = m_found.all && m_scripts.areReady();
    return {.areInstalled = areInstalled,
            .areOutdated = !areInstalled && m_found.any,
            .areTrusted = !areInstalled || areTrusted(),
            .changedAt = m_stat ? m_stat->modified : distantPast};
}

void AgentHooks::readConfiguration() {
    const ReadResult read =
        m_files.read(m_configuration, {.links = Links::follow, .cap = ConfigurationFile::cap});
    const bool isMissing = read.error == std::errc::no_such_file_or_directory;
    if (m_trouble.begins(isMissing ? std::error_code() : read.error)) {
        qCWarning(Logs::hooks, "can't read %s: %s", m_configuration.c_str(), read.error.message().c_str());
    }
    // A read that failed is tried again at the next look.
    m_isRead = read || !m_stat;
    const auto text = read ? std::optional<std::string_view>(read.bytes) : std::nullopt;
    m_found = find(text);
    noteConfiguration(text);
}

void AgentHooks::putIn(ConfigurationFile& file, const std::string& text, bool hadOurs) {
    forgetConfiguration();
    if (text == file.text()) {
        file.sweep();
        return;
    }
    if (!hadOurs && file.text()) {
        file.backUp();
    }
    if (!hadOurs) {
        setMarker(file.text() ? std::nullopt : std::optional(file.target()));
    }
    file.write(text);
    qCInfo(Logs::hooks, "put hooks into %s", file.target().c_str());
}

void AgentHooks::takeOut(ConfigurationFile& file, const std::string& text, bool hadOurs) {
    forgetConfiguration();
    if (!hadOurs) {
        file.sweep();
        return;
    }
    if (ConfigurationText::parseOrThrow(text).members().empty() && haveMade(file.target())) {
        file.remove();
    } else {
        file.write(text);
    }
    setMarker(std::nullopt);
    qCInfo(Logs::hooks, "took hooks out of %s", file.target().c_str());
}

void AgentHooks::setMarker(const std::optional<std::string>& madeFile) const {
    const OpenedFolder folder = m_support.open();
    if (!folder) {
        return;
    }
    const std::string marker(m_names.madeMarker);
    if (madeFile) {
        // Without it the file stays when the hooks go, which hurts nobody.
        if (const auto error = folder->write(marker, *madeFile, {.mode = SupportDirectory::fileMode})) {
            qCWarning(Logs::hooks, "can't write %s: %s", m_support.pathOf(marker).c_str(),
                      error.message().c_str());
        }
    } else {
        folder->remove(marker);
    }
}

bool AgentHooks::haveMade(const std::string& path) const {
    const OpenedFolder folder = m_support.open();
    const ReadResult marker =
        folder ? folder->read(std::string(m_names.madeMarker), {}) : ReadResult{{}, folder.error};
    return marker && marker.bytes == path;
}

} // namespace veslora
