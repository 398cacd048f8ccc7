// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Monitors/AgentSource.h"

#include "VesloraCore/Agents/HookTrial.h"

namespace veslora {

void AgentSource::note(const std::string& sessionId, const HookSign& sign) {
    if (!HookTrial::isTrial(sessionId) && (!m_lastSign || m_lastSign->time <= sign.time)) {
        m_lastSign = sign;
    }
}

} // namespace veslora
