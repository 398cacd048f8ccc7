// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/CodexMonitor.h"

#include "VesloraCore/CodexProcess.h"
#include "VesloraCore/SupportNames.h"

#include <algorithm>

namespace veslora {

CodexMonitor::CodexMonitor(const AgentMonitorSeams& seams, SupportDirectory& support, Defaults& settings)
    : HookedAgentMonitor(seams, support, settings, SupportNames::codexSpool, SupportNames::codexAnswers),
      m_hooks(seams.files, support, seams.directories.codex + "/hooks.json"),
      m_usage({seams.scheduler, seams.files, seams.watcher}, seams.directories.codex + "/sessions",
              seams.calendar) {}

void CodexMonitor::readSessions() {
    const auto requests = readSpool();
    // A look at every process of the machine, so only while there is a session to look for.
    if (!m_state.isEmpty()) {
        m_state.reconcile(runningClients(), now());
    }
    m_state.removeDead([this](std::int32_t pid) { return m_seams.processes.isAlive(pid); });
    handle(requests);
}

std::vector<ClaudePermissionRequest> CodexMonitor::readSpool() {
    std::vector<ClaudePermissionRequest> requests;
    m_spool.take(now(), [&](const SpoolFile& file) {
        const auto name = CodexSpoolName::parse(file.name);
        if (name && name->kind == CodexSpoolName::Kind::permission) {
            if (auto request = takeRequest(file, *name)) {
                requests.push_back(std::move(*request));
            } else {
                m_answers.write(ClaudeDecision::pass, name->id);
            }
        } else if (name) {
            applyEvent(file, *name);
        }
    });
    return requests;
}

void CodexMonitor::applyEvent(const SpoolFile& file, const CodexSpoolName& name) {
    const auto event = isRecent(file) ? eventOf(file, name) : std::nullopt;
    if (event) {
        m_state.apply(*event);
    }
}

/// No file tells that the session waits, so the request itself does, also one that only the terminal will
/// answer. A session that no event could come from would wait for ever, and is not begun.
std::optional<ClaudePermissionRequest> CodexMonitor::takeRequest(const SpoolFile& file,
                                                                 const CodexSpoolName& name) {
    const auto event = eventOf(file, name);
    auto request =
        event && AgentAnswers::isId(name.id)
            ? ClaudePermissionRequest::parse(file.content.bytes, name.id, file.time, m_seams.directories.home)
            : std::nullopt;
    if (!request) {
        return std::nullopt;
    }
    request->agent = AgentKind::codex;
    if (isRecent(file)) {
        m_state.apply(*event);
        m_state.needsApproval(request->sessionId, "Wants to use " + request->tool, file.time);
    }
    return request;
}

std::optional<CodexHookEvent> CodexMonitor::eventOf(const SpoolFile& file, const CodexSpoolName& name) const {
    return file.content ? CodexHookEvent::parse(file.content.bytes, file.time, sessionProcess(name.pid))
                        : std::nullopt;
}

/// The hook's parent, unless that is the server behind all terminals: it outlives the session, and has no
/// terminal to jump to. The session is then found by its working directory.
std::optional<std::int32_t> CodexMonitor::sessionProcess(std::optional<std::int32_t> hookParent) const {
    const auto process = hookParent ? m_seams.processes.processOf(*hookParent) : std::nullopt;
    const bool isServer = process && CodexProcess::isServer(process->executable, process->firstArgument);
    return isServer ? std::nullopt : hookParent;
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

std::vector<ClaudeSessionSummary> CodexMonitor::currentSessions() const {
    return m_state.summaries(now());
}

/// A session that is gone, or no longer waits, is past its prompt. Until its script ends Codex shows no
/// prompt of its own, so a script that should still wait is let go.
void CodexMonitor::dropOvertaken() {
    const auto sessions = currentSessions();
    for (const ClaudePermissionRequest& request : m_permissions.pending(now())) {
        const auto session = std::ranges::find(sessions, request.sessionId, &ClaudeSessionSummary::id);
        if (session == sessions.end() ||
            !std::holds_alternative<ClaudeStatus::NeedsApproval>(session->status)) {
            m_answers.write(ClaudeDecision::pass, request.id);
            m_permissions.remove(request.id);
        }
    }
}

} // namespace veslora
