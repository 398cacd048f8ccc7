// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Monitors/RequestQueue.h"

#include "VesloraUI/Claude/Spool/AgentAnswers.h"
#include "VesloraUI/Platform/Logs.h"

#include <algorithm>
#include <utility>

namespace veslora {

RequestQueue::RequestQueue(Scheduler& scheduler, FrontTerminal terminals, AgentAnswers& answers,
                           std::function<void()> changed)
    : m_scheduler(scheduler), m_terminals(terminals), m_answers(answers), m_changed(std::move(changed)) {}

void RequestQueue::take(const ClaudePermissionRequest& request, const SessionPlace& place) {
    const FrontTerminal::Look look = m_terminals.look(place);
    if (look.isInFront) {
        m_answers.write(ClaudeDecision::pass, request.id);
        return;
    }
    if (!ClaudePermissions::isAnswerable(request, m_scheduler.steadyNow()) ||
        m_permissions.deadline(request.id)) {
        return;
    }
    m_permissions.add(request);
    if (!look.multiplexed.empty()) {
        m_held.push_back({request.id, m_terminals.ask(look.multiplexed, place.pane,
                                                      [this, id = request.id](bool isInFront) {
                                                          decide(id, isInFront);
                                                      })});
    } else if (!m_held.empty()) {
        m_held.push_back({request.id, Task(), true});
    }
}

void RequestQueue::decide(const std::string& id, bool isInFront) {
    if (isInFront) {
        m_answers.write(ClaudeDecision::pass, id);
        remove(id);
    } else if (const auto held = std::ranges::find(m_held, id, &Held::id); held != m_held.end()) {
        held->isDecided = true;
        release();
    }
    m_changed();
}

void RequestQueue::remove(const std::string& id) {
    m_permissions.remove(id);
    std::erase_if(m_held, [&id](const Held& held) { return held.id == id; });
    release();
}

void RequestQueue::removeExpired() {
    for (const std::string& id : m_permissions.removeExpired(m_scheduler.steadyNow())) {
        qCInfo(Logs::agents, "%s has run out of time", AgentAnswers::named(id));
    }
    std::erase_if(m_held, [this](const Held& held) { return !m_permissions.deadline(held.id); });
    release();
}

/// Shows those in front of which nothing is held back any more.
void RequestQueue::release() {
    const auto firstUndecided = std::ranges::find(m_held, false, &Held::isDecided);
    m_held.erase(m_held.begin(), firstUndecided);
}

void RequestQueue::awaitDeadline() {
    const auto next = m_permissions.nextDeadline();
    if (next == m_awaited && (!next || m_deadlineTask.isActive())) {
        return;
    }
    m_awaited = next;
    m_deadlineTask = next ? m_scheduler.after(*next - m_scheduler.steadyNow(), m_changed) : Task();
}

void RequestQueue::stop() {
    m_deadlineTask.cancel();
    m_awaited.reset();
    for (const Held& held : m_held) {
        m_permissions.remove(held.id);
    }
    m_held.clear();
}

std::vector<ClaudePermissionRequest> RequestQueue::open() const {
    return m_permissions.pending(m_scheduler.steadyNow());
}

std::vector<ClaudePermissionRequest> RequestQueue::shown() const {
    auto requests = open();
    std::erase_if(requests, [this](const ClaudePermissionRequest& request) {
        return std::ranges::find(m_held, request.id, &Held::id) != m_held.end();
    });
    return requests;
}

} // namespace veslora
