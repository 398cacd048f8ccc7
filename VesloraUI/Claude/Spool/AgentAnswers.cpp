// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Spool/AgentAnswers.h"

#include "VesloraCore/Text/IdentifierText.h"
#include "VesloraUI/Claude/Spool/SupportDirectory.h"

#include <vector>

namespace veslora {

AgentAnswers::AgentAnswers(SupportDirectory& support, std::string_view name)
    : m_support(support), m_name(name) {}

bool AgentAnswers::isId(const std::string& id) {
    constexpr std::size_t longest = 64;
    return id.size() <= longest && IdentifierText::isPlain(id);
}

std::error_code AgentAnswers::write(ClaudeDecision decision, const std::string& id) {
    if (!isId(id)) {
        return std::make_error_code(std::errc::invalid_argument);
    }
    const OpenedFolder folder = m_support.createFolder(m_name);
    return folder ? folder->write(id, std::string(word(decision)), {.mode = SupportDirectory::fileMode})
                  : folder.error;
}

bool AgentAnswers::hasBeenTaken(const std::string& id) const {
    const OpenedFolder folder = m_support.openFolder(m_name);
    return folder && !folder->stat(id);
}

void AgentAnswers::removeStale(Timestamp now) {
    const OpenedFolder folder = m_support.openFolder(m_name);
    if (!folder) {
        return;
    }
    for (const std::string& name : folder->list().value_or(std::vector<std::string>())) {
        const auto found = folder->stat(name);
        if (found && found->modified < now - lifetime) {
            folder->remove(name);
        }
    }
}

} // namespace veslora
