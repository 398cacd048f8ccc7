// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Monitors/CodexSource.h"

#include "VesloraCore/Agents/ApprovalAlert.h"
#include "VesloraCore/Agents/ClaudePermissions.h"
#include "VesloraCore/Agents/CodexProcess.h"
#include "VesloraCore/Agents/HookTrial.h"
#include "VesloraUI/Claude/Spool/AgentAnswers.h"
#include "VesloraUI/Claude/Spool/AgentSpool.h"
#include "VesloraUI/Support/ReadersWords.h"

#include <algorithm>
#include <utility>

namespace veslora {

CodexSource::CodexSource(const AgentMonitorSeams& seams)
    : m_scheduler(seams.scheduler), m_processes(seams.processes), m_home(seams.directories.home) {}

AgentSource::Requests CodexSource::readSessions() {
    m_isServer.clear();
    // A look at every process of the machine, so only while there is a session to look for.
    if (!m_state.isEmpty()) {
        m_state.reconcile(runningClients(), m_scheduler.now());
    }
    m_state.removeDead([this](std::int32_t pid) { return m_processes.isAlive(pid); });
    return std::exchange(m_newRequests, {});
}

UnderstandSpoolFile CodexSource::reader(AgentAnswers& answers) {
    return [this, &answers, home = m_home](const SpoolFile& file) -> SpoolNews {
        // On any thread: only the news may touch `this` and `answers`.
        const auto name = CodexSpoolName::parse(file.name);
        if (!name) {
            return {};
        }
        if (name->kind == CodexSpoolName::Kind::permission) {
            auto prompt = promptOf(file, *name, home);
            if (!prompt) {
                return [&answers, id = name->id] { answers.write(ClaudeDecision::pass, id); };
            }
            return [this, &answers, prompt = std::move(*prompt)] { take(prompt, answers); };
        }
        auto event = file.content
                         ? CodexHookEvent::parse(file.content.bytes, file.time, name->pid, readersWords())
                         : std::nullopt;
        if (!event) {
            return {};
        }
        return [this, event = std::move(*event)] { take(event); };
    };
}

std::optional<CodexSource::Prompt> CodexSource::promptOf(const SpoolFile& file, const CodexSpoolName& name,
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

void CodexSource::take(CodexHookEvent event) {
    if (AgentSpool::isRecent(event.time, m_scheduler.now())) {
        note(event.sessionId, HookSign::of(event));
        // Nobody's session runs in no terminal: else it would seem to be in front while our own window is.
        event.pid = HookTrial::isTrial(event.sessionId) ? std::nullopt : sessionProcess(event.pid);
        m_state.apply(event);
    }
}

/// No file tells that the session waits, so the request itself does, also one that only the terminal will
/// answer. The script of an old one has ended, and what came of its prompt nobody knows.
void CodexSource::take(const Prompt& prompt, AgentAnswers& answers) {
    take(prompt.event);
    note(prompt.event.sessionId, {HookSign::Kind::request, prompt.event.time});
    if (m_scheduler.now() - prompt.event.time <= ClaudePermissions::wait) {
        m_state.needsApproval(prompt.event.sessionId, std::string(AlertNotice::wantsToUse) + prompt.tool,
                              prompt.event.time);
    }
    if (prompt.request) {
        m_newRequests.push_back(*prompt.request);
    } else {
        answers.write(ClaudeDecision::pass, prompt.id);
    }
}

/// The hook's parent, unless that is the server behind all terminals: it outlives the session, and has no
/// terminal to jump to. The session is then found by its working directory.
std::optional<std::int32_t> CodexSource::sessionProcess(std::optional<std::int32_t> hookParent) {
    if (!hookParent) {
        return std::nullopt;
    }
    // OPTIMIZATION: most events come from one parent, and a look costs 20 microseconds.
    const auto [known, isNew] = m_isServer.try_emplace(*hookParent, false);
    if (isNew) {
        const auto process = m_processes.processOf(*hookParent);
        known->second = process && CodexProcess::isServer(process->executable, process->firstArgument);
    }
    return known->second ? std::nullopt : hookParent;
}

std::vector<CodexSessions::Client> CodexSource::runningClients() const {
    std::vector<CodexSessions::Client> clients;
    for (const RunningProcess& process : m_processes.processesNamed(CodexProcess::programName)) {
        if (process.workingDirectory && CodexProcess::isClient(process.executable, process.firstArgument)) {
            clients.push_back({process.pid, *process.workingDirectory});
        }
    }
    return clients;
}

std::function<void()> CodexSource::answered(const std::string& sessionId) {
    const auto since = m_state.approvalAnswered(sessionId);
    return [this, sessionId, since] {
        if (since) {
            m_state.raiseApproval(sessionId, *since);
        }
    };
}

std::vector<ClaudeSessionSummary> CodexSource::sessions() const {
    return m_state.summaries(m_scheduler.now());
}

/// A session that is gone, or no longer waits, is past its prompt. Until its script ends Codex shows no
/// prompt of its own, so a script that should still wait is let go.
std::vector<RequestEnd> CodexSource::overtaken(const Requests& open) const {
    const auto current = sessions();
    std::vector<RequestEnd> ends;
    for (const ClaudePermissionRequest& request : open) {
        const auto session = std::ranges::find(current, request.sessionId, &ClaudeSessionSummary::id);
        if (session == current.end() ||
            !std::holds_alternative<ClaudeStatus::NeedsApproval>(session->status)) {
            ends.push_back({request.id, RequestEnd::Script::isLetGo});
        }
    }
    return ends;
}

} // namespace veslora
