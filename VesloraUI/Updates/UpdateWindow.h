// SPDX-License-Identifier: MIT
// Shows the window for updates while there is something to see, and lets all of it go when it is closed. Main
// thread only.
#pragma once

#include <QIcon>
#include <QObject>

#include <memory>

class QQmlEngine;
class QQuickWindow;

namespace veslora {

class AppcastUpdater;

class UpdateWindow : public QObject {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(UpdateWindow)

  public:
    /// Follows the updater from now on.
    UpdateWindow(QQmlEngine& engine, AppcastUpdater& updater);
    ~UpdateWindow() override;

    /// Null while it is closed.
    [[nodiscard]] QQuickWindow* window() const { return m_window.get(); }

  signals:
    /// The user is done with it, or there is nothing to see any more, and all of it is gone.
    void closed();

  private:
    /// Unasked for it never takes the focus, and lets a window that is there already lie where it lies.
    void show(bool isAskedFor);
    void make();
    void follow();

    QQmlEngine& m_engine;
    AppcastUpdater& m_updater;
    std::unique_ptr<QQuickWindow> m_window;
    QIcon m_icon; ///< null before the first window
};

} // namespace veslora
