// SPDX-License-Identifier: MIT
#include "Veslora/AppDelegate.h"

#include "VesloraCore/Island/StatusLine.h"
#include "VesloraCore/Text/Words.h"
#include "VesloraUI/Claude/Hooks/HooksCommand.h"
#include "VesloraUI/Claude/Hooks/KnownHooks.h"
#include "VesloraUI/Claude/Monitors/KnownAgents.h"
#include "VesloraUI/Settings/FirstStart.h"
#include "VesloraUI/Settings/SettingsCommand.h"
#include "VesloraUI/Style/Views.h"
#include "VesloraUI/Support/LocalCalendar.h"

#include <QCoreApplication>
#include <QSysInfo>

#include <algorithm>
#include <iterator>

namespace veslora {

namespace {

AgentMonitorSeams seamsOf(const Platform& platform) {
    return {platform.directories,         platform.scheduler, platform.files,
            platform.directoryWatcher,    platform.processes, platform.hostApplications,
            platform.terminalMultiplexer, platform.programs,  std::make_shared<LocalCalendar>()};
}

/// Null in a build that was given no feed.
std::unique_ptr<AppcastUpdater> makeUpdater(const Platform& platform, Defaults& settings) {
    const char* const feed = VESLORA_UPDATE_FEED;
    if (*feed == '\0') {
        return nullptr;
    }
    const std::string processor = QSysInfo::buildCpuArchitecture().toStdString();
    return std::make_unique<AppcastUpdater>(
        AppcastUpdater::Build{.feed = feed,
                              .key = VESLORA_UPDATE_KEY,
                              .version = VESLORA_VERSION,
                              .architecture = std::string(Appcast::debianArchitecture(processor)),
                              .helper = platform.directories.executables + "/veslora-updates",
                              .folder = platform.directories.cache + "/updates"},
        AppcastUpdater::Seams{platform.scheduler, platform.files, platform.programs, platform.packages},
        settings);
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
      m_pausing(settings, platform.scheduler, platform.doNotDisturb, std::make_shared<LocalCalendar>()),
      m_environment(platform.scheduler, platform.frameClock, settings, platform.haptics, platform.sounds,
                    platform.scrollDevices, platform.automation, platform.appearance, platform.screens,
                    m_pausing),
      m_support(platform.files, platform.directories.support, platform.directories.runtime),
      m_monitors(makeAgentMonitors(seamsOf(platform), m_support, settings)), m_agents(pointersTo(m_monitors)),
      m_notch(platform, m_measuring, settings, m_agents,
              [this](NotchViewModel& model) { return makeIslandContent(m_engine, model); }),
      m_metronomePreviewer(settings, {platform.scheduler, platform.metronomePreview, platform.suspension}),
      m_loginItem(platform.loginItem), m_appcast(makeUpdater(platform, settings)),
      m_updater(m_appcast ? static_cast<Updating&>(*m_appcast) : m_noUpdater),
      m_updateWindow(m_appcast ? std::make_unique<UpdateWindow>(m_engine, *m_appcast) : nullptr),
      m_settingsWindow(m_engine, settings, {m_agents, m_metronomePreviewer, m_loginItem, m_updater},
                       {platform.scheduler, platform.files, platform.directoryWatcher, m_measuring,
                        platform.directories.configuration},
                       QStringLiteral(VESLORA_VERSION)),
      m_upgrade({platform.scheduler, platform.files, platform.directoryWatcher, platform.programs},
                QCoreApplication::applicationFilePath().toStdString(),
                {[this] { return isAtRest(); },
                 [this] {
                     m_makesWay = true;
                     QCoreApplication::quit();
                 }}) {
    prepareEngine(m_engine, m_environment);
    m_agents.obey(m_pausing);
    QObject::connect(&m_engine, &QQmlEngine::quit, qApp, &QCoreApplication::quit);
    QObject::connect(&m_settingsWindow, &SettingsWindow::closed, &m_engine, [this] { forgetViews(); });
    if (m_updateWindow) {
        QObject::connect(m_updateWindow.get(), &UpdateWindow::closed, &m_engine, [this] { forgetViews(); });
    }
    QObject::connect(&platform.suspension, &Suspension::didWake, &m_environment,
                     &ViewEnvironment::readClocks);
}

void AppDelegate::applicationDidFinishLaunching() {
    m_notch.start();
    showStatusMenu();
    QObject::connect(&m_updater, &UpdaterModel::canCheckForUpdatesChanged, &m_engine,
                     [this] { showStatusMenu(); });
    QObject::connect(&m_pausing, &AlertPausing::changed, &m_engine, [this] {
        // A menu that is open stays as it is while the desktop's do-not-disturb comes and goes.
        if (m_offersResume != m_pausing.pausedUntil().has_value()) {
            showStatusMenu();
        }
    });
    m_platform.appearance.follow();
    m_platform.doNotDisturb.follow();
    m_upgrade.follow();
    if (m_appcast) {
        m_appcast->start();
    }
    if (takeFirstStart(m_support, m_settings, m_agents)) {
        m_settingsWindow.show(QStringLiteral("agents"));
    }
}

void AppDelegate::applicationWillTerminate() {
    m_notch.stop();
}

/// What the engine keeps of them for a next time, which is rare, is most of what the window costs.
void AppDelegate::forgetViews() {
    m_engine.collectGarbage();
    m_engine.trimComponentCache();
    m_platform.memory.releaseSoon();
}

bool AppDelegate::isAtRest() {
    const auto& tracker = m_notch.tracker();
    const LiveActivityKind activity = m_notch.closedActivity();
    const bool isTelling = activity == LiveActivityKind::timerAlert ||
                           activity == LiveActivityKind::claudeAlert ||
                           activity == LiveActivityKind::claudeFinished;
    const bool isInUse = m_notch.timer().countdown() || m_notch.metronome().isRunning() ||
                         m_notch.keepAwake().isOn() || (tracker && tracker->isExpanded()) ||
                         m_settingsWindow.window();
    const bool isUpdating = m_appcast && m_appcast->state().step != AppcastUpdater::Step::none;
    return !isTelling && !isInUse && !isUpdating && m_agents.pendingRequests().empty();
}

CommandOutcome AppDelegate::perform(const CommandLine::Ask& ask) {
    switch (ask.command) {
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
    case Command::pause:
        m_pausing.pause(ask.length);
        return {};
    case Command::resume:
        m_pausing.resume();
        return {};
    case Command::quit:
        QCoreApplication::quit();
        return {};
    case Command::exportSettings:
        return SettingsCommand::exported(m_settings);
    case Command::importSettings:
        return SettingsCommand::import(m_settings, ask.text);
    case Command::installHooks:
    case Command::removeHooks:
    case Command::hooksStatus:
        return performOnHooks(ask);
    case Command::status:
        break;
    }
    return {true, statusLine()};
}

/// By hooks of its own: the monitor notices each change of the configuration, also by others.
CommandOutcome AppDelegate::performOnHooks(const CommandLine::Ask& ask) {
    const auto kind = agentKindOf(ask.text);
    if (!kind) {
        return {.isDone = false};
    }
    const auto hooks = makeAgentHooks(*kind, m_platform.files, m_support, m_platform.directories);
    const AgentMonitor* monitor = m_agents.monitorOf(*kind);
    return HooksCommand::perform(ask.command, *hooks, traitsOf(*kind),
                                 monitor ? monitor->lastSign() : std::nullopt);
}

CommandOutcome AppDelegate::openSettings() {
    m_settingsWindow.open();
    const bool isOpen = m_settingsWindow.window() != nullptr;
    return {isOpen, isOpen ? "" : translatable("CommandLine", "The settings window can't be made.")};
}

CommandOutcome AppDelegate::outcomeOf(bool isDone) {
    return {isDone, isDone ? "" : translatable("CommandLine", "The island is not on screen.")};
}

std::string AppDelegate::statusLine() {
    const auto& tracker = m_notch.tracker();
    return StatusLine::make(tracker && tracker->isExpanded(), m_notch.closedActivity(), m_agents.summaries(),
                            m_pausing.pausedUntil());
}

std::vector<StatusMenuRow> AppDelegate::pauseRows() {
    m_offersResume = m_pausing.pausedUntil().has_value();
    if (m_offersResume) {
        return {{.text = QCoreApplication::translate("StatusMenu", "Resume Alerts"),
                 .activate = [this] { m_pausing.resume(); }}};
    }
    return {{.text = QCoreApplication::translate("StatusMenu", "Pause Alerts for 1 Hour"),
             .activate = [this] { m_pausing.pause(AlertPause::For{AlertPause::hour}); }},
            {.text = QCoreApplication::translate("StatusMenu", "Pause Alerts Until Tomorrow"),
             .activate = [this] { m_pausing.pause(AlertPause::UntilTomorrow{}); }}};
}

void AppDelegate::showStatusMenu() {
    std::vector<StatusMenuRow> rows{{.text = QCoreApplication::translate("StatusMenu", "Settings…"),
                                     .shortcut = QStringLiteral("Ctrl+,"),
                                     .activate = [this] { openSettings(); }},
                                    // Stays visible while nothing can check.
                                    {.text = QCoreApplication::translate("StatusMenu", "Check for Updates…"),
                                     .isEnabled = m_updater.canCheckForUpdates(),
                                     .activate = [this] { m_updater.checkForUpdates(); }},
                                    {}};
    std::ranges::copy(pauseRows(), std::back_inserter(rows));
    rows.push_back({});
    rows.push_back({.text = QCoreApplication::translate("StatusMenu", "Quit Veslora"),
                    .shortcut = QStringLiteral("Ctrl+Q"),
                    .activate = [] { QCoreApplication::quit(); }});
    m_platform.statusMenu.show(QStringLiteral("Veslora"), QStringLiteral("rectangle.topthird.inset.filled"),
                               std::move(rows));
}

} // namespace veslora
