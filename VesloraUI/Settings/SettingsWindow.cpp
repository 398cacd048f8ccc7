// SPDX-License-Identifier: MIT
#include "VesloraUI/Settings/SettingsWindow.h"

#include "VesloraUI/Claude/Monitors/AgentsModel.h"
#include "VesloraUI/Metronome/MetronomeModel.h"
#include "VesloraUI/Settings/LoginItemManager.h"
#include "VesloraUI/Settings/UpdaterModel.h"
#include "VesloraUI/Style/ProgramIcon.h"
#include "VesloraUI/Style/Views.h"

#include <QGuiApplication>
#include <QQmlComponent>
#include <QQuickWindow>
#include <QScreen>

#include <utility>

namespace veslora {

SettingsWindow::SettingsWindow(QQmlEngine& engine, const Models& models, AccentPreview::Seams preview,
                               QString version)
    : m_engine(engine), m_models(models), m_preview(std::move(preview)), m_version(std::move(version)) {}

SettingsWindow::~SettingsWindow() = default;

void SettingsWindow::open(const QString& tab) {
    show(tab);
    if (m_window) {
        m_window->raise();
        m_window->requestActivate();
    }
}

void SettingsWindow::show(const QString& tab) {
    if (!m_window) {
        make();
    }
    if (m_window) {
        QMetaObject::invokeMethod(m_window.get(), "select", Q_ARG(QString, tab));
        m_window->show();
    }
}

void SettingsWindow::make() {
    auto preview = std::make_unique<AccentPreview>(m_preview);
    auto made =
        createView(m_engine, QStringLiteral("Settings/SettingsView.qml"),
                   {{QStringLiteral("agents"), QVariant::fromValue(&m_models.agents)},
                    {QStringLiteral("metronomePreviewer"), QVariant::fromValue(&m_models.metronomePreviewer)},
                    {QStringLiteral("loginItem"), QVariant::fromValue(&m_models.loginItem)},
                    {QStringLiteral("updater"), QVariant::fromValue(&m_models.updater)},
                    {QStringLiteral("accentPreview"), QVariant::fromValue(preview.get())},
                    {QStringLiteral("version"), m_version}});
    m_window.reset(qobject_cast<QQuickWindow*>(made.release()));
    if (!m_window) {
        return;
    }
    // The toolkit remembers what it has made of an icon, so that one for each window would add up.
    if (m_icon.isNull()) {
        m_icon = programIcon();
    }
    m_window->setIcon(m_icon);
    // The last of its children, so that the views that show it go before it.
    preview.release()->setParent(m_window.get());
    restorePlace();
    connect(m_window.get(), &QWindow::visibleChanged, this, [this](bool isVisible) {
        if (!isVisible && m_window) {
            keepPlace();
            connect(m_window.get(), &QObject::destroyed, this, &SettingsWindow::closed);
            m_window.release()->deleteLater();
        }
    });
}

void SettingsWindow::keepPlace() {
    m_place = Place{m_window->property("page").toString(), m_window->geometry()};
}

/// A screen that is gone meanwhile, or another size of text, has the window manager place it again.
void SettingsWindow::restorePlace() {
    if (!m_place) {
        return;
    }
    QMetaObject::invokeMethod(m_window.get(), "select", Q_ARG(QString, m_place->tab));
    const QScreen* const screen = QGuiApplication::screenAt(m_place->geometry.center());
    if (screen != nullptr && m_place->geometry.width() == m_window->width()) {
        m_window->setGeometry(m_place->geometry);
    }
}

} // namespace veslora
