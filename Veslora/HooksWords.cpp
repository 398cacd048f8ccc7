// SPDX-License-Identifier: MIT
#include "Veslora/HooksWords.h"

#include "Veslora/Asking.h"
#include "VesloraCore/Agents/AgentTraits.h"
#include "VesloraUI/Claude/Hooks/HooksCommand.h"

#include <string>

namespace veslora::HooksWords {

namespace {

constexpr int notInstalled = 3;

int runFor(const AgentTraits& agent, Command command, const Words& words) {
    const auto answer = Asking::askOrDo({command, {}, std::string(agent.rawValue)}, words);
    const int status = Asking::report(answer, words);
    const bool isMissing =
        status == 0 && command == Command::hooksStatus && !HooksCommand::saysInstalled(answer.text, agent);
    return isMissing ? notInstalled : status;
}

} // namespace

int run(const CommandLine::Hooks& request, const Words& words) {
    int worst = 0;
    for (const AgentTraits& agent : agentTraits) {
        if (request.agent && *request.agent != agent.kind) {
            continue;
        }
        const int status = runFor(agent, request.command, words);
        // That something failed says more than that something is missing.
        worst = worst == 1 || status == 0 ? worst : status;
    }
    return worst;
}

} // namespace veslora::HooksWords
