// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/AgentAnswers.h"

#include "VesloraCore/IdentifierText.h"
#include "VesloraUI/Claude/SupportDirectory.h"

#include <vector>

namespace veslora {

AgentAnswers::AgentAnswers(Files& files, SupportDirectory& support, std::string_view name)
    : m_files(files), m_support(support), m_name(name) {}

bool AgentAnswers::isId(const std::string& id) {
    constexpr std::size_t longest = 64;
    return id.size() <= longest && IdentifierText::isPlain(id);
}

std::error_code AgentAnswers::write(ClaudeDecision decision, const std::string& id) {
    if (!isId(id)) {
        return std::make_error_code(std::errc::invalid_argument);
    }
    if (const auto error = m_support.createFolder(m_name)) {
        return error;
    }
    return m_files.write(m_support.pathOf(m_name) + "/" + id, std::string(word(decision)),
                         {.mode = SupportDirectory::fileMode});
}

bool AgentAnswers::hasBeenTaken(const std::string& id) const {
    return !m_files.stat(m_support.pathOf(m_name) + "/" + id, Links::refuse);
}

void AgentAnswers::removeStale(Timestamp now) {
    const std::string directory = m_support.pathOf(m_name);
    for (const std::string& name : m_files.list(directory).value_or(std::vector<std::string>())) {
        const auto found = m_files.stat(directory + "/" + name, Links::refuse);
        if (found && found->modified < now - lifetime) {
            m_files.remove(directory + "/" + name);
        }
    }
}

} // namespace veslora
