// SPDX-License-Identifier: MIT
// See ClaudePermissions.h.
#include "VesloraCore/Agents/ClaudePermissions.h"

#include <algorithm>

namespace veslora {

namespace {

// The agent stamps its file from 40 ms before to 150 ms after our hook's payload; this is that lead with a
// margin.
constexpr double longestLead = 0.1;

} // namespace

double ClaudePermissions::answerBy(Timestamp receivedAt, Timestamp now, double steadyNow) {
    const double age = std::clamp(now - receivedAt, 0.0, wait);
    return steadyNow + (wait - age);
}

bool ClaudePermissions::isAnswerable(const ClaudePermissionRequest& request, double steadyNow) {
    return request.answerBy > steadyNow;
}

void ClaudePermissions::add(const ClaudePermissionRequest& request) {
    if (!deadline(request.id)) {
        m_requests.push_back(request);
    }
}

void ClaudePermissions::remove(std::string_view id) {
    std::erase_if(m_requests, [&](const ClaudePermissionRequest& request) { return request.id == id; });
}

std::vector<std::string> ClaudePermissions::removeExpired(double steadyNow) {
    std::vector<std::string> expired;
    std::erase_if(m_requests, [&](const ClaudePermissionRequest& request) {
        const bool isOver = !isAnswerable(request, steadyNow);
        if (isOver) {
            expired.push_back(request.id);
        }
        return isOver;
    });
    return expired;
}

std::vector<ClaudePermissionRequest> ClaudePermissions::pending(double steadyNow) const {
    std::vector<ClaudePermissionRequest> found;
    std::ranges::copy_if(m_requests, std::back_inserter(found), [&](const ClaudePermissionRequest& request) {
        return isAnswerable(request, steadyNow);
    });
    std::ranges::stable_sort(found, [](const ClaudePermissionRequest& a, const ClaudePermissionRequest& b) {
        return a.answerBy < b.answerBy;
    });
    return found;
}

std::optional<double> ClaudePermissions::deadline(std::string_view id) const {
    for (const ClaudePermissionRequest& request : m_requests) {
        if (request.id == id) {
            return request.answerBy;
        }
    }
    return std::nullopt;
}

std::optional<double> ClaudePermissions::nextDeadline() const {
    std::optional<double> next;
    for (const ClaudePermissionRequest& request : m_requests) {
        next = std::min(next.value_or(request.answerBy), request.answerBy);
    }
    return next;
}

bool ClaudePermissions::canBeAnsweredOutside(std::string_view tool) {
    return tool != "AskUserQuestion" && tool != "ExitPlanMode";
}

bool ClaudePermissions::isAnsweredElsewhere(const ClaudePermissionRequest& request,
                                            const ClaudeHookEvent& event) {
    if (request.agent != AgentKind::claude || event.sessionId != request.sessionId ||
        event.time <= request.receivedAt) {
        return false;
    }
    if (std::holds_alternative<ClaudeHookEvent::Prompt>(event.kind)) {
        return true;
    }
    return std::holds_alternative<ClaudeHookEvent::ToolDone>(event.kind) &&
           event.tool == ToolUse{request.tool, request.input};
}

bool ClaudePermissions::isAnsweredElsewhere(const ClaudePermissionRequest& request,
                                            std::optional<Timestamp> sawWaitingStamp,
                                            const ClaudeSessionFile& file) {
    if (request.agent != AgentKind::claude || file.sessionId != request.sessionId || file.waitingFor) {
        return false;
    }
    return sawWaitingStamp && *sawWaitingStamp >= request.receivedAt - longestLead && file.statusSince &&
           *file.statusSince > *sawWaitingStamp;
}

} // namespace veslora
