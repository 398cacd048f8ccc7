// SPDX-License-Identifier: MIT
#include "VesloraUI/Updates/UpdateWindow.h"

#include "VesloraUI/Style/ProgramIcon.h"
#include "VesloraUI/Style/Views.h"
#include "VesloraUI/Updates/AppcastUpdater.h"

#include <QQuickWindow>

namespace veslora {

UpdateWindow::UpdateWindow(QQmlEngine& engine, AppcastUpdater& updater)
    : m_engine(engine), m_updater(updater) {
    connect(&updater, &AppcastUpdater::wantsToShow, this, &UpdateWindow::show);
    connect(&updater, &AppcastUpdater::changed, this, &UpdateWindow::follow);
}

/// The program ends: what is shown was not dismissed.
UpdateWindow::~UpdateWindow() {
    if (m_window) {
        m_window->disconnect(this);
    }
}

void UpdateWindow::show(bool isAskedFor) {
    if (!m_window) {
        make();
    }
    if (!m_window) {
        return;
    }
    // The toolkit's own word for it, which its widgets set as well: the window manager is told that nobody
    // asked for this window.
    m_window->setProperty("_q_showWithoutActivating", !isAskedFor);
    m_window->show();
    if (isAskedFor) {
        m_window->raise();
        m_window->requestActivate();
    }
}

void UpdateWindow::make() {
    auto made = createView(m_engine, QStringLiteral("Updates/UpdateView.qml"),
                           {{QStringLiteral("updater"), QVariant::fromValue(&m_updater)}});
    m_window.reset(qobject_cast<QQuickWindow*>(made.release()));
    if (!m_window) {
        return;
    }
    // The toolkit remembers what it has made of an icon, so that one for each window would add up.
    if (m_icon.isNull()) {
        m_icon = programIcon();
    }
    m_window->setIcon(m_icon);
    connect(m_window.get(), &QWindow::visibleChanged, this, [this](bool isVisible) {
        if (!isVisible && m_window) {
            QQuickWindow* const window = m_window.release();
            connect(window, &QObject::destroyed, this, &UpdateWindow::closed);
            window->deleteLater();
            m_updater.dismiss();
        }
    });
}

void UpdateWindow::follow() {
    if (m_window && m_updater.state().step == AppcastUpdater::Step::none) {
        m_window->close();
    }
}

} // namespace veslora
