// SPDX-License-Identifier: MIT
#include "VesloraUI/Settings/SettingsWindow.h"

#include "VesloraUI/Claude/Monitors/AgentsModel.h"
#include "VesloraUI/Metronome/MetronomeModel.h"
#include "VesloraUI/Style/Views.h"

#include <QQmlComponent>
#include <QQuickWindow>

#include <utility>

namespace veslora {

SettingsWindow::SettingsWindow(QQmlEngine& engine, AgentsModel& agents, MetronomeModel& metronomePreviewer,
                               QString version)
    : m_engine(engine), m_agents(agents), m_metronomePreviewer(metronomePreviewer),
      m_version(std::move(version)) {}

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
    auto made =
        createView(m_engine, QStringLiteral("Settings/SettingsView.qml"),
                   {{QStringLiteral("agents"), QVariant::fromValue(&m_agents)},
                    {QStringLiteral("metronomePreviewer"), QVariant::fromValue(&m_metronomePreviewer)},
                    {QStringLiteral("version"), m_version}});
    m_window.reset(qobject_cast<QQuickWindow*>(made.release()));
    if (!m_window) {
        return;
    }
    connect(m_window.get(), &QWindow::visibleChanged, this, [this](bool isVisible) {
        if (!isVisible && m_window) {
            m_window.release()->deleteLater();
        }
    });
}

} // namespace veslora
