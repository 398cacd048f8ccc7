// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/AgentHooks.h"

#include "VesloraUI/Claude/ConfigurationFile.h"

#include <utility>

namespace veslora {

AgentHooks::AgentHooks(Files& files, SupportDirectory& support, std::string configuration,
                       std::span<const std::string_view> scripts)
    : m_files(files), m_support(support), m_scripts(support, scripts),
      m_configuration(std::move(configuration)) {}

AgentHooks::State AgentHooks::state() {
    const auto stat = m_files.stat(m_configuration, Links::follow);
    if (!m_isRead || stat != m_stat) {
        m_stat = stat;
        readConfiguration();
    }
    const bool areInstalled = m_found.all && m_scripts.areReady();
    return {areInstalled, !areInstalled && m_found.any};
}

void AgentHooks::readConfiguration() {
    const ReadResult read =
        m_files.read(m_configuration, {.links = Links::follow, .cap = ConfigurationFile::cap});
    // A read that failed is tried again at the next look.
    m_isRead = read || !m_stat;
    m_found = find(read ? std::optional<std::string_view>(read.bytes) : std::nullopt);
}

} // namespace veslora
