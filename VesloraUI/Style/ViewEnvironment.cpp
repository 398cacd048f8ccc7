// SPDX-License-Identifier: MIT
#include "VesloraUI/Style/ViewEnvironment.h"

#include "VesloraUI/Platform/Appearance.h"

#include <QQmlEngine>
#include <QVariant>

namespace veslora {

namespace {
constexpr auto propertyName = "veslora.environment";
}

void TimelineTicker::addListener() {
    if (m_listeners++ == 0) {
        m_task = m_scheduler.every(m_period, Precision::exact, [this] { emit ticked(); });
    }
}

void TimelineTicker::removeListener() {
    if (--m_listeners == 0) {
        m_task.cancel();
    }
}

void ViewEnvironment::installOn(QQmlEngine& engine) {
    engine.setProperty(propertyName, QVariant::fromValue<QObject*>(this));
}

ViewEnvironment& ViewEnvironment::of(const QQmlEngine* engine) {
    auto* environment = qobject_cast<ViewEnvironment*>(engine->property(propertyName).value<QObject*>());
    Q_ASSERT_X(environment, "ViewEnvironment", "the engine was given no environment");
    return *environment;
}

void ViewEnvironment::readClocks() {
    for (auto& [period, ticker] : m_tickers) {
        emit ticker.ticked();
    }
}

bool ViewEnvironment::reducesMotion() const {
    return m_appearance.current().reducedMotion;
}

TimelineTicker& ViewEnvironment::ticker(double period) {
    return m_tickers.try_emplace(period, m_scheduler, period).first->second;
}

} // namespace veslora
