// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Hooks/HooksCommand.h"

#include "VesloraCore/Text/TerminalText.h"
#include "VesloraUI/Claude/Hooks/HookFailures.h"

#include <QCoreApplication>

#include <cstdint>
#include <string>

namespace veslora::HooksCommand {

namespace {

constexpr std::string_view installed = "installed";

QString translated(const char* text) {
    return QCoreApplication::translate("HooksCommand", text);
}

std::string lineOf(const QString& text) {
    return TerminalText::withoutControls(text.toStdString());
}

QString nameOf(const AgentTraits& agent) {
    return QString::fromUtf8(agent.fullName.data(), static_cast<qsizetype>(agent.fullName.size()));
}

CommandOutcome install(AgentHooks& hooks, const AgentTraits& agent) {
    if (const QString why = HookFailures::textOf([&] { hooks.install(); }, agent); !why.isEmpty()) {
        return {false, lineOf(why)};
    }
    const char* pattern =
        hooks.state().areTrusted
            ? QT_TRANSLATE_NOOP("HooksCommand", "%1: the hooks are in.")
            : QT_TRANSLATE_NOOP("HooksCommand", "%1: the hooks are in. Run /hooks in it and trust them.");
    return {true, lineOf(translated(pattern).arg(nameOf(agent)))};
}

CommandOutcome remove(AgentHooks& hooks, const AgentTraits& agent) {
    if (const QString why = HookFailures::textOf([&] { hooks.remove(); }, agent); !why.isEmpty()) {
        return {false, lineOf(why)};
    }
    return {true,
            lineOf(translated(QT_TRANSLATE_NOOP("HooksCommand",
                                                "%1: the hooks are out. Sessions that run go on working, and "
                                                "ask in their terminals."))
                       .arg(nameOf(agent)))};
}

/// Hooks that were heard since they were put in are trusted, whatever the agent's configuration may say.
bool areTrusted(const AgentHooksState& state, const std::optional<HookSign>& lastSign) {
    return state.areTrusted || (lastSign && lastSign->time >= state.changedAt);
}

std::string standing(AgentHooks& hooks, const AgentTraits& agent, const std::optional<HookSign>& lastSign) {
    const AgentHooksState state = hooks.state();
    if (state.areInstalled) {
        const std::string trust = areTrusted(state, lastSign) ? "" : "; not trusted yet, run /hooks in it";
        const std::string sign =
            lastSign ? "; last event at " + std::to_string(static_cast<std::int64_t>(lastSign->time)) : "";
        return std::string(installed) + trust + sign;
    }
    const QString why = HookFailures::textOf([&] { hooks.check(); }, agent);
    const std::string obstacle = why.isEmpty() ? "" : "; not possible: " + why.toStdString();
    return (state.areOutdated ? "needs an update" : "not installed") + obstacle;
}

std::string beginningOf(const AgentTraits& agent) {
    return std::string(agent.rawValue) + ": ";
}

} // namespace

bool saysInstalled(std::string_view line, const AgentTraits& agent) {
    return line.starts_with(beginningOf(agent) + std::string(installed));
}

CommandOutcome perform(Command command, AgentHooks& hooks, const AgentTraits& agent,
                       const std::optional<HookSign>& lastSign) {
    if (command == Command::installHooks) {
        return install(hooks, agent);
    }
    if (command == Command::removeHooks) {
        return remove(hooks, agent);
    }
    return {true, TerminalText::withoutControls(beginningOf(agent) + standing(hooks, agent, lastSign))};
}

} // namespace veslora::HooksCommand
