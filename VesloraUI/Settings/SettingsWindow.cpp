// SPDX-License-Identifier: MIT
#include "VesloraUI/Settings/SettingsWindow.h"

#include "VesloraUI/Claude/Monitors/AgentsModel.h"
#include "VesloraUI/Metronome/MetronomeModel.h"
#include "VesloraUI/Settings/LoginItemManager.h"
#include "VesloraUI/Settings/UpdaterModel.h"
#include "VesloraUI/Store/Defaults.h"
#include "VesloraUI/Store/SettingsKeys.h"
#include "VesloraUI/Style/ProgramIcon.h"
#include "VesloraUI/Style/Views.h"

#include <QGuiApplication>
#include <QQmlComponent>
#include <QQuickWindow>
#include <QRect>
#include <QScreen>

#include <array>
#include <optional>
#include <utility>

namespace veslora {

namespace {

std::string stored(const QRect& geometry) {
    return QStringLiteral("%1,%2,%3,%4")
        .arg(geometry.x())
        .arg(geometry.y())
        .arg(geometry.width())
        .arg(geometry.height())
        .toStdString();
}

/// Absent for what is no geometry, or none of any screen's.
std::optional<QRect> geometryOf(const std::string& text) {
    constexpr int farthest = 1'000'000;
    const QStringList parts = QString::fromStdString(text).split(QLatin1Char(','));
    std::array<int, 4> numbers{};
    if (parts.size() != static_cast<qsizetype>(numbers.size())) {
        return std::nullopt;
    }
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        bool isNumber = false;
        numbers.at(i) = parts[static_cast<qsizetype>(i)].toInt(&isNumber);
        if (!isNumber || numbers.at(i) < -farthest || numbers.at(i) > farthest) {
            return std::nullopt;
        }
    }
    const auto [x, y, width, height] = numbers;
    return width > 0 && height > 0 ? std::optional(QRect(x, y, width, height)) : std::nullopt;
}

} // namespace

SettingsWindow::SettingsWindow(QQmlEngine& engine, Defaults& settings, const Models& models,
                               AccentPreview::Seams preview, QString version)
    : m_engine(engine), m_settings(settings), m_models(models), m_preview(std::move(preview)),
      m_version(std::move(version)) {}

SettingsWindow::~SettingsWindow() {
    if (m_window) {
        keepPlace();
    }
}

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
    m_settings.set(SettingsKeys::settingsTab, m_window->property("page").toString().toStdString());
    m_settings.set(SettingsKeys::settingsPlace, stored(m_window->geometry()));
}

/// A screen that is gone meanwhile, or another size of text, has the window manager place it again.
void SettingsWindow::restorePlace() {
    const QString tab =
        QString::fromStdString(m_settings.stringValue(SettingsKeys::settingsTab).value_or(""));
    QMetaObject::invokeMethod(m_window.get(), "select", Q_ARG(QString, tab));
    const auto place = geometryOf(m_settings.stringValue(SettingsKeys::settingsPlace).value_or(""));
    if (place && place->width() == m_window->width() &&
        QGuiApplication::screenAt(place->center()) != nullptr) {
        m_window->setGeometry(*place);
    }
}

} // namespace veslora
