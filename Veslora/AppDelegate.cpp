// SPDX-License-Identifier: MIT
#include "Veslora/AppDelegate.h"

#include "VesloraCore/Island/StatusLine.h"
#include "VesloraUI/Claude/Monitors/KnownAgents.h"
#include "VesloraUI/Settings/FirstStart.h"
#include "VesloraUI/Style/Views.h"
#include "VesloraUI/Support/LocalCalendar.h"

#include <QCoreApplication>

namespace veslora {

namespace {

AgentMonitorSeams seamsOf(const Platform& platform) {
    return {platform.directories,
            platform.scheduler,
            platform.files,
            platform.directoryWatcher,
            platform.processes,
            platform.hostApplications,
            platform.terminalMultiplexer,
            std::make_shared<LocalCalendar>()};
}

AgentsModel::Monitors pointersTo(const std::vector<std::unique_ptr<AgentMonitor>>& monitors) {
    AgentsModel::Monitors pointers;
    for (const auto& monitor : monitors) {
        pointers.push_back(monitor.get());
    }
    return pointers;
}

} // namespace

AppDelegate::AppDelegate(const Platform& platform, Defaults& settings)
    : m_platform(platform), m_settings(settings),
      m_environment(platform.scheduler, platform.frameClock, settings, platform.haptics, platform.sounds,
                    platform.scrollDevices, platform.automation),
      m_support(platform.files, platform.directories.support, platform.directories.runtime),
      m_monitors(makeAgentMonitors(seamsOf(platform), m_support, settings)), m_agents(pointersTo(m_monitors)),
      m_notch(platform, m_measuring, settings, m_agents,
              [this](NotchViewModel& model) { return makeIslandContent(m_engine, model); }),
      m_metronomePreviewer(settings, {platform.scheduler, platform.metronomePreview, platform.suspension}),
      m_settingsWindow(m_engine, m_agents, m_metronomePreviewer, QStringLiteral(VESLORA_VERSION)) {
    prepareEngine(m_engine, m_environment);
    QObject::connect(&m_engine, &QQmlEngine::quit, qApp, &QCoreApplication::quit);
    QObject::connect(&platform.suspension, &Suspension::didWake, &m_environment,
                     &ViewEnvironment::readClocks);
}

void AppDelegate::applicationDidFinishLaunching() {
    m_notch.start();
    showStatusMenu();
    if (takeFirstStart(m_support, m_settings, m_agents)) {
        m_settingsWindow.show(QStringLiteral("agents"));
    }
}

void AppDelegate::applicationWillTerminate() {
    m_notch.stop();
}

CommandOutcome AppDelegate::perform(Command command) {
    switch (command) {
    case Command::settings:
        return openSettings();
    case Command::toggle:
        return outcomeOf(m_notch.toggle());
    case Command::nextPage:
        return outcomeOf(m_notch.turnPage(1));
    case Command::previousPage:
        return outcomeOf(m_notch.turnPage(-1));
    case Command::edit:
        return outcomeOf(m_notch.toggleEditing());
    case Command::quit:
        QCoreApplication::quit();
        return {};
    case Command::status:
        break;
    }
    return {true, statusLine()};
}

CommandOutcome AppDelegate::openSettings() {
    m_settingsWindow.open();
    const bool isOpen = m_settingsWindow.window() != nullptr;
    return {isOpen, isOpen ? "" : "The settings window can't be made."};
}

CommandOutcome AppDelegate::outcomeOf(bool isDone) {
    return {isDone, isDone ? "" : "The island is not on screen."};
}

std::string AppDelegate::statusLine() {
    const auto& tracker = m_notch.tracker();
    return StatusLine::make(tracker && tracker->isExpanded(), m_notch.closedActivity(), m_agents.summaries());
}

void AppDelegate::showStatusMenu() {
    const auto text = [](const char* source) { return QCoreApplication::translate("StatusMenu", source); };
    m_platform.statusMenu.show(QStringLiteral("Veslora"), QStringLiteral("rectangle.topthird.inset.filled"),
                               {
                                   {.text = text("Settings…"),
                                    .shortcut = QStringLiteral("Ctrl+,"),
                                    .activate = [this] { openSettings(); }},
                                   // Stays visible while nothing can check: there is no updater yet.
                                   {.text = text("Check for Updates…"), .isEnabled = false},
                                   {},
                                   {.text = text("Quit Veslora"),
                                    .shortcut = QStringLiteral("Ctrl+Q"),
                                    .activate = [] { QCoreApplication::quit(); }},
                               });
}

} // namespace veslora
