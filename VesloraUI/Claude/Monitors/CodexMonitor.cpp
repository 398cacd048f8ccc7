// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Monitors/CodexMonitor.h"

#include "VesloraCore/Agents/CodexProcess.h"

#include <algorithm>
#include <utility>

namespace veslora {

CodexMonitor::CodexMonitor(const AgentMonitorSeams& seams, SupportDirectory& support, Defaults& settings)
    : HookedAgentMonitor(traitsOf(AgentKind::codex), seams, support, settings,
                         [this, home = seams.directories.home](const SpoolFile& file) {
                             return understand(this, home, file);
                         }),
      m_hooks(seams.files, support, seams.directories.codex + "/hooks.json"),
      m_usage({seams.scheduler, seams.files, seams.watcher}, seams.directories.codex + "/sessions",
              seams.calendar) {}

void CodexMonitor::readSessions() {
    const auto requests = std::exchange(m_newRequests, {});
    m_isServer.clear();
    // A look at every process of the machine, so only while there is a session to look for.
    if (!m_state.isEmpty()) {
        m_state.reconcile(runningClients(), now());
    }
    m_state.removeDead([this](std::int32_t pid) { return m_seams.processes.isAlive(pid); });
    handle(requests);
}

SpoolNews CodexMonitor::understand(CodexMonitor* monitor, const std::string& home, const SpoolFile& file) {
    const auto name = CodexSpoolName::parse(file.name);
    if (!name) {
        return {};
    }
    if (name->kind == CodexSpoolName::Kind::permission) {
        auto prompt = promptOf(file, *name, home);
        if (!prompt) {
            return [monitor, id = name->id] { monitor->m_answers.write(ClaudeDecision::pass, id); };
        }
        return [monitor, prompt = std::move(*prompt)] { monitor->take(prompt); };
    }
    auto event =
        file.content ? CodexHookEvent::parse(file.content.bytes, file.time, name->pid) : std::nullopt;
    if (!event) {
        return {};
    }
    return [monitor, event = std::move(*event)] { monitor->take(event); };
}

std::optional<CodexMonitor::Prompt> CodexMonitor::promptOf(const SpoolFile& file, const CodexSpoolName& name,
                                                           const std::string& home) {
    const std::string& bytes = file.content.bytes;
    const auto payload =
        file.content && AgentAnswers::isId(name.id) ? HookPayload::parse(bytes) : std::nullopt;
    auto event =
        payload && payload->isRequest() ? CodexHookEvent::of(*payload, file.time, name.pid) : std::nullopt;
    if (!event) {
        return std::nullopt;
    }
    auto request = bytes.size() <= ClaudePermissionRequest::longestPayload
                       ? ClaudePermissionRequest::of(*payload, name.id, file.time, home)
                       : std::nullopt;
    if (request) {
        request->agent = AgentKind::codex;
    }
    return Prompt{name.id, std::move(*event), payload->tool, std::move(request)};
}

void CodexMonitor::take(CodexHookEvent event) {
    if (isRecent(event.time)) {
        event.pid = sessionProcess(event.pid);
        m_state.apply(event);
    }
}

/// No file tells that the session waits, so the request itself does, also one that only the terminal will
/// answer. The script of an old one has ended, and what came of its prompt nobody knows.
void CodexMonitor::take(const Prompt& prompt) {
    take(prompt.event);
    if (now() - prompt.event.time <= ClaudePermissions::wait) {
        m_state.needsApproval(prompt.event.sessionId, "Wants to use " + prompt.tool, prompt.event.time);
    }
    if (prompt.request) {
        m_newRequests.push_back(*prompt.request);
    } else {
        m_answers.write(ClaudeDecision::pass, prompt.id);
    }
}

/// The hook's parent, unless that is the server behind all terminals: it outlives the session, and has no
/// terminal to jump to. The session is then found by its working directory.
std::optional<std::int32_t> CodexMonitor::sessionProcess(std::optional<std::int32_t> hookParent) {
    if (!hookParent) {
        return std::nullopt;
    }
    // OPTIMIZATION: most events come from one parent, and a look costs 20 microseconds.
    const auto [known, isNew] = m_isServer.try_emplace(*hookParent, false);
    if (isNew) {
        const auto process = m_seams.processes.processOf(*hookParent);
        known->second = process && CodexProcess::isServer(process->executable, process->firstArgument);
    }
    return known->second ? std::nullopt : hookParent;
}

std::vector<CodexSessions::Client> CodexMonitor::runningClients() const {
    std::vector<CodexSessions::Client> clients;
    for (const RunningProcess& process : m_seams.processes.processesNamed(CodexProcess::programName)) {
        if (process.workingDirectory && CodexProcess::isClient(process.executable, process.firstArgument)) {
            clients.push_back({process.pid, *process.workingDirectory});
        }
    }
    return clients;
}

std::function<void()> CodexMonitor::requestWasAnswered(const std::string& sessionId) {
    const auto since = m_state.approvalAnswered(sessionId);
    return [this, sessionId, since] {
        if (since) {
            m_state.raiseApproval(sessionId, *since);
        }
    };
}

std::vector<ClaudeSessionSummary> CodexMonitor::currentSessions() const {
    return m_state.summaries(now());
}

/// A session that is gone, or no longer waits, is past its prompt. Until its script ends Codex shows no
/// prompt of its own, so a script that should still wait is let go.
void CodexMonitor::dropOvertaken() {
    const auto sessions = currentSessions();
    for (const ClaudePermissionRequest& request : m_requests.open()) {
        const auto session = std::ranges::find(sessions, request.sessionId, &ClaudeSessionSummary::id);
        if (session == sessions.end() ||
            !std::holds_alternative<ClaudeStatus::NeedsApproval>(session->status)) {
            m_answers.write(ClaudeDecision::pass, request.id);
            m_requests.remove(request.id);
        }
    }
}

} // namespace veslora
