// SPDX-License-Identifier: MIT
#include "VesloraUI/Style/Glide.h"

#include "VesloraUI/Platform/Observable.h"
#include "VesloraUI/Style/ViewEnvironment.h"

#include <cmath>

namespace veslora {

Glide::Glide(QObject* parent) : QObject(parent) {
    m_way.setDuration(duration);
    m_way.setStartValue(0.0);
    m_way.setEndValue(1.0);
    connect(&m_way, &QVariantAnimation::valueChanged, this,
            [this](const QVariant& share) { setValue(m_start + (m_target - m_start) * share.toDouble()); });
}

void Glide::componentComplete() {
    m_isComplete = true;
    const QQmlEngine* const engine = qmlEngine(this);
    m_environment = engine ? &ViewEnvironment::of(engine) : nullptr;
}

void Glide::setTarget(double target) {
    if (!assign(this, m_target, target, &Glide::targetChanged)) {
        return;
    }
    const bool isMoving = m_way.state() == QAbstractAnimation::Running;
    // OPTIMIZATION: what burns down by less than a point at a time would otherwise draw every frame for it.
    const bool isStill = m_environment && m_environment->reducesMotion();
    if (!m_isComplete || !m_isLive || isStill || (!isMoving && std::abs(target - m_value) <= leastWay)) {
        m_way.stop();
        setValue(target);
        return;
    }
    m_start = m_value;
    m_way.stop();
    m_way.start();
}

void Glide::setValue(double value) {
    assign(this, m_value, value, &Glide::valueChanged);
}

} // namespace veslora
