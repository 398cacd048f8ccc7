// SPDX-License-Identifier: MIT
// Opens the settings window, and lets all of it go when the user closes it. Main thread only.
#pragma once

#include "VesloraUI/Settings/AccentPreview.h"

#include <QIcon>
#include <QObject>
#include <QString>

#include <memory>

class QQmlEngine;
class QQuickWindow;

namespace veslora {

class AgentsModel;
class Defaults;
class LoginItemManager;
class MetronomeModel;
class UpdaterModel;

class SettingsWindow : public QObject {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(SettingsWindow)

  public:
    struct Models {
        AgentsModel& agents;
        MetronomeModel& metronomePreviewer; ///< plays samples of the metronome's sounds
        LoginItemManager& loginItem;
        UpdaterModel& updater;
    };

    /// Each window has an island of its own that shows the accents, on `preview`.
    SettingsWindow(QQmlEngine& engine, Defaults& settings, const Models& models, AccentPreview::Seams preview,
                   QString version);
    ~SettingsWindow() override;

    /// Shows the window, or brings it forward if it is there already, and gives it the focus. `tab` is the
    /// name of a `SettingsPage`; an empty or unknown one leaves the tab as it is. A window that
    /// is opened again has the tab, the place and the height that the last one had, also one of an earlier
    /// run.
    void open(const QString& tab = {});
    /// Shows it as any program's window is shown: a user who types elsewhere goes on typing there, where the
    /// window manager sees to that.
    void show(const QString& tab = {});

    /// Null while it is closed.
    [[nodiscard]] QQuickWindow* window() const { return m_window.get(); }

  signals:
    /// All of it is gone.
    void closed();

  private:
    void make();
    void keepPlace();
    void restorePlace();

    QQmlEngine& m_engine;
    Defaults& m_settings;
    const Models m_models;
    const AccentPreview::Seams m_preview;
    QString m_version;
    std::unique_ptr<QQuickWindow> m_window;
    QIcon m_icon; ///< null before the first window
};

} // namespace veslora
