// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Spool/AgentAnswers.h"

#include "VesloraCore/Text/IdentifierText.h"
#include "VesloraUI/Claude/Spool/SupportDirectory.h"
#include "VesloraUI/Platform/Logs.h"

#include <vector>

namespace veslora {

AgentAnswers::AgentAnswers(SupportDirectory& support, std::string_view name)
    : m_support(support), m_name(name) {}

bool AgentAnswers::isId(const std::string& id) {
    constexpr std::size_t longest = 64;
    return id.size() <= longest && IdentifierText::isPlain(id);
}

const char* AgentAnswers::named(const std::string& id) {
    return isId(id) ? id.c_str() : "(odd id)";
}

std::error_code AgentAnswers::write(ClaudeDecision decision, const std::string& id) {
    if (!isId(id)) {
        qCWarning(Logs::spool, "no answer to %s: its id can be no file's name", m_name.c_str());
        return std::make_error_code(std::errc::invalid_argument);
    }
    const OpenedFolder folder = m_support.createFolder(m_name);
    const std::error_code error =
        folder ? folder->write(id, std::string(word(decision)), {.mode = SupportDirectory::fileMode})
               : folder.error;
    if (error) {
        qCWarning(Logs::spool, "can't write %s/%s: %s", m_support.pathOf(m_name).c_str(), id.c_str(),
                  error.message().c_str());
    } else {
        qCInfo(Logs::agents, "answer %s to %s", std::string(word(decision)).c_str(), id.c_str());
    }
    return error;
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
            const std::error_code error = folder->remove(name);
            if (m_sweepTrouble.begins(error)) {
                qCWarning(Logs::spool, "can't sweep an answer from %s: %s", m_support.pathOf(m_name).c_str(),
                          error.message().c_str());
            } else if (!error) {
                qCInfo(Logs::spool, "swept an answer that nobody took from %s",
                       m_support.pathOf(m_name).c_str());
            }
        }
    }
}

} // namespace veslora
