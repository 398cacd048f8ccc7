// SPDX-License-Identifier: MIT
#include "Veslora/Report.h"

#include "VesloraCore/Agents/AgentTraits.h"
#include "VesloraLinux/DBus/SessionBus.h"
#include "VesloraLinux/System/LinuxDirectories.h"
#include "VesloraLinux/System/LinuxScheduler.h"
#include "VesloraLinux/System/PosixFiles.h"
#include "VesloraLinux/X11/X11DesktopReport.h"
#include "VesloraLinux/X11/X11WindowSystem.h"
#include "VesloraUI/Claude/Hooks/KnownHooks.h"
#include "VesloraUI/Claude/Monitors/ClaudeSessionDirectory.h"
#include "VesloraUI/Claude/Spool/SupportDirectory.h"

#include <QDBusConnectionInterface>
#include <QGuiApplication>
#include <QSysInfo>

#include <algorithm>
#include <array>

namespace veslora {

namespace {

/// Those whose absence changes what a user sees.
constexpr std::array services{"org.freedesktop.Notifications", "org.kde.StatusNotifierWatcher",
                              "org.gnome.SessionManager",      "org.freedesktop.PowerManagement",
                              "org.freedesktop.ScreenSaver",   "org.veslora.Veslora"};

std::optional<std::vector<BugReport::Service>> findServices() {
    const auto bus = SessionBus::connection();
    if (!bus || !bus->interface()) {
        return std::nullopt;
    }
    std::vector<BugReport::Service> found;
    for (const char* name : services) {
        found.push_back({name, bus->interface()->isServiceRegistered(QString::fromUtf8(name))});
    }
    return found;
}

/// Of the newest version that a session runs.
std::optional<std::string> claudeVersion(Files& files, const std::string& configuration) {
    ClaudeSessionDirectory sessions(files, configuration + "/sessions");
    std::optional<std::string> version;
    for (const ClaudeSessionFile& session : sessions.read(0)) {
        if (!session.version.empty()) {
            version = std::max(version.value_or(std::string()), session.version);
        }
    }
    return version;
}

std::vector<BugReport::Agent> findAgents() {
    const Directories directories = LinuxDirectories::find(LinuxDirectories::processEnvironment);
    PosixFiles files;
    SupportDirectory support(files, directories.support, directories.runtime);
    const auto claude = makeAgentHooks(AgentKind::claude, files, support, directories)->state();
    const auto codex = makeAgentHooks(AgentKind::codex, files, support, directories)->state();
    return {{.name = std::string(traitsOf(AgentKind::claude).name),
             .hasHooks = claude.areInstalled,
             .areHooksOutdated = claude.areOutdated,
             .version = claudeVersion(files, directories.claude)},
            {.name = std::string(traitsOf(AgentKind::codex).name),
             .hasHooks = codex.areInstalled,
             .areHooksOutdated = codex.areOutdated}};
}

std::optional<BugReport::Display> findDisplay() {
    if (!qobject_cast<QGuiApplication*>(QCoreApplication::instance()) || !X11WindowSystem::applies()) {
        return std::nullopt;
    }
    LinuxScheduler scheduler;
    return X11DesktopReport::gather(scheduler);
}

} // namespace

BugReport gatherReport(std::optional<std::string> running) {
    return {.version = VESLORA_VERSION,
            .toolkit = qVersion(),
            .system = (QSysInfo::prettyProductName() + QStringLiteral(", ") + QSysInfo::kernelType() +
                       QStringLiteral(" ") + QSysInfo::kernelVersion())
                          .toStdString(),
            .session = qEnvironmentVariable("XDG_SESSION_TYPE").toStdString(),
            .desktop = qEnvironmentVariable("XDG_CURRENT_DESKTOP").toStdString(),
            .display = findDisplay(),
            .services = findServices(),
            .agents = findAgents(),
            .running = std::move(running)};
}

} // namespace veslora
