// SPDX-License-Identifier: MIT
// Owns everything that the user sees beside the status menu and the settings window. Main thread only.
#pragma once

#include "VesloraCore/Island/CommandLine.h"
#include "VesloraUI/Claude/Monitors/AgentsModel.h"
#include "VesloraUI/Claude/Spool/SupportDirectory.h"
#include "VesloraUI/Island/NotchWindowController.h"
#include "VesloraUI/Platform/NoOpUpdater.h"
#include "VesloraUI/Settings/LoginItemManager.h"
#include "VesloraUI/Settings/SettingsWindow.h"
#include "VesloraUI/Settings/UpdaterModel.h"
#include "VesloraUI/Store/AlertPausing.h"
#include "VesloraUI/Style/ViewEnvironment.h"
#include "VesloraUI/Support/QtTextMeasuring.h"
#include "VesloraUI/Updates/AppcastUpdater.h"
#include "VesloraUI/Updates/UpdateWindow.h"
#include "VesloraUI/Updates/UpgradeWatch.h"

#include <QQmlEngine>

#include <memory>
#include <vector>

namespace veslora {

class AppDelegate {
  public:
    /// Builds all models; nothing of it runs yet.
    AppDelegate(const Platform& platform, Defaults& settings);

    void applicationDidFinishLaunching();
    /// The whole order of stopping; afterwards no script waits for an answer any more.
    void applicationWillTerminate();

    /// Whether the program ends so that another version, which was installed in its place, starts.
    [[nodiscard]] bool makesWay() const { return m_makesWay; }

    /// Does what another process asked for. What is not to quit was done, or not, when this returns.
    CommandOutcome perform(const CommandLine::Ask& ask);

  private:
    /// Whether nothing would be lost, and nothing seen, if the program ended and began again.
    [[nodiscard]] bool isAtRest();
    void forgetViews();
    CommandOutcome openSettings();
    CommandOutcome performOnHooks(const CommandLine::Ask& ask);
    /// What was asked of an island that may be out of sight.
    [[nodiscard]] static CommandOutcome outcomeOf(bool isDone);
    [[nodiscard]] std::string statusLine();
    void showStatusMenu();
    [[nodiscard]] std::vector<StatusMenuRow> pauseRows();

    Platform m_platform;
    Defaults& m_settings;
    AlertPausing m_pausing;
    ViewEnvironment m_environment;
    QQmlEngine m_engine;
    QtTextMeasuring m_measuring;
    SupportDirectory m_support;
    std::vector<std::unique_ptr<AgentMonitor>> m_monitors;
    AgentsModel m_agents;
    NotchWindowController m_notch;
    MetronomeModel m_metronomePreviewer;
    LoginItemManager m_loginItem;
    std::unique_ptr<AppcastUpdater> m_appcast; ///< null in a build without a feed
    NoOpUpdater m_noUpdater;
    UpdaterModel m_updater;
    std::unique_ptr<UpdateWindow> m_updateWindow; ///< null without an updater
    SettingsWindow m_settingsWindow;
    UpgradeWatch m_upgrade;
    bool m_makesWay = false;
    bool m_offersResume = false; ///< the status menu does
};

} // namespace veslora
