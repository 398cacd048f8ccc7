// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Monitors/KnownAgents.h"

#include "VesloraUI/Claude/Hooks/ClaudeHooks.h"
#include "VesloraUI/Claude/Hooks/CodexHooks.h"
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
            std::make_unique<ClaudeHooks>(seams.files, support, home + "/settings.json",
                                          seams.directories.executables),
            std::move(usage), std::move(sessionsFolder)};
}

AgentParts codexAgent(const AgentMonitorSeams& seams, SupportDirectory& support) {
    const std::string& home = seams.directories.codex;
    return {traitsOf(AgentKind::codex),
            std::make_unique<CodexSource>(seams),
            std::make_unique<CodexHooks>(seams.files, support, home + "/hooks.json"),
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
