// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Hooks/HookFailures.h"

#include "VesloraCore/Agents/Hooks/InstallError.h"
#include "VesloraUI/Claude/Hooks/FileError.h"
#include "VesloraUI/Support/FileReasons.h"

#include <QCoreApplication>

namespace veslora::HookFailures {

namespace {

QString textOf(const FileError& error) {
    const QString pattern =
        error.action() == FileError::Action::reading
            ? QCoreApplication::translate("AgentHooks", "Couldn't read %1: %2. Nothing was changed.")
            : QCoreApplication::translate("AgentHooks", "Couldn't write %1: %2. Nothing was changed.");
    return pattern.arg(QString::fromStdString(error.path()), FileReasons::text(error.code()));
}

} // namespace

QString textOf(const std::function<void()>& work, const AgentTraits& agent) {
    try {
        work();
    } catch (const ClaudeHooksInstaller::InstallError&) {
        return QCoreApplication::translate("AgentHooks", agent.hookTexts.notUnderstood);
    } catch (const FileError& error) {
        return textOf(error);
    }
    return {};
}

} // namespace veslora::HookFailures
