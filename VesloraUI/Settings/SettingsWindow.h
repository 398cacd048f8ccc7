// SPDX-License-Identifier: MIT
// Opens the settings window, and lets all of it go when the user closes it. Main thread only.
#pragma once

#include <QObject>
#include <QString>

#include <memory>

class QQmlEngine;
class QQuickWindow;

namespace veslora {

class AgentsModel;
class MetronomeModel;

class SettingsWindow : public QObject {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(SettingsWindow)

  public:
    /// `metronomePreviewer` plays samples of the metronome's sounds.
    SettingsWindow(QQmlEngine& engine, AgentsModel& agents, MetronomeModel& metronomePreviewer,
                   QString version);
    ~SettingsWindow() override;

    /// Shows the window, or brings it forward if it is there already, and gives it the focus. `tab` is the
    /// name of a `SettingsPage`; an empty or unknown one leaves the tab as it is, which is the first at
    /// first.
    void open(const QString& tab = {});
    /// Shows it as any program's window is shown: a user who types elsewhere goes on typing there, where the
    /// window manager sees to that.
    void show(const QString& tab = {});

    /// Null while it is closed.
    [[nodiscard]] QQuickWindow* window() const { return m_window.get(); }

  private:
    void make();

    QQmlEngine& m_engine;
    AgentsModel& m_agents;
    MetronomeModel& m_metronomePreviewer;
    QString m_version;
    std::unique_ptr<QQuickWindow> m_window;
};

} // namespace veslora
