// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Monitors/KnownAgents.h"

#include "VesloraUI/Claude/Hooks/KnownHooks.h"
#include "VesloraUI/Claude/Monitors/ClaudeSource.h"
#include "VesloraUI/Claude/Monitors/ClaudeUsageMonitor.h"
#include "VesloraUI/Claude/Monitors/CodexSource.h"
#include "VesloraUI/Claude/Monitors/CodexUsageMonitor.h"
#include "VesloraUI/Claude/Monitors/HookedAgentMonitor.h"

#include <utility>

namespace veslora {

namespace {

TranscriptSeams transcriptSeamsOf(const AgentMonitorSeams& seams) {
    return {seams.scheduler, seams.files, seams.watcher};
}

} // namespace

AgentParts claudeAgent(const AgentMonitorSeams& seams, SupportDirectory& support) {
    const std::string& home = seams.directories.claude;
    auto source = std::make_unique<ClaudeSource>(seams);
    auto usage = std::make_unique<ClaudeUsageMonitor>(
        transcriptSeamsOf(seams), support, home + "/projects", seams.calendar,
        [asked = source.get()] { return asked->liveSessionIds(); });
    std::string sessionsFolder = source->sessionsFolder();
    return {traitsOf(AgentKind::claude), std::move(source),
            makeAgentHooks(AgentKind::claude, seams.files, support, seams.directories), std::move(usage),
            std::move(sessionsFolder)};
}

AgentParts codexAgent(const AgentMonitorSeams& seams, SupportDirectory& support) {
    const std::string& home = seams.directories.codex;
    return {traitsOf(AgentKind::codex),
            std::make_unique<CodexSource>(seams),
            makeAgentHooks(AgentKind::codex, seams.files, support, seams.directories),
            std::make_unique<CodexUsageMonitor>(transcriptSeamsOf(seams), home + "/sessions", seams.calendar),
            {}};
}

std::vector<std::unique_ptr<AgentMonitor>> makeAgentMonitors(const AgentMonitorSeams& seams,
                                                             SupportDirectory& support, Defaults& settings) {
    std::vector<std::unique_ptr<AgentMonitor>> monitors;
    for (const auto makeParts : {claudeAgent, codexAgent}) {
        monitors.push_back(
            std::make_unique<HookedAgentMonitor>(makeParts(seams, support), seams, support, settings));
    }
    return monitors;
}

} // namespace veslora
