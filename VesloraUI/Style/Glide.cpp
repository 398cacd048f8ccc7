// SPDX-License-Identifier: MIT
#include "VesloraUI/Style/Glide.h"

#include "VesloraUI/Platform/Observable.h"

#include <cmath>

namespace veslora {

Glide::Glide(QObject* parent) : QObject(parent) {
    m_way.setDuration(duration);
    m_way.setStartValue(0.0);
    m_way.setEndValue(1.0);
    connect(&m_way, &QVariantAnimation::valueChanged, this,
            [this](const QVariant& share) { setValue(m_start + (m_target - m_start) * share.toDouble()); });
}

void Glide::setTarget(double target) {
    if (!assign(this, m_target, target, &Glide::targetChanged)) {
        return;
    }
    const bool isMoving = m_way.state() == QAbstractAnimation::Running;
    // OPTIMIZATION: what burns down by less than a point at a time would otherwise draw every frame for it.
    if (!m_isComplete || !m_isLive || (!isMoving && std::abs(target - m_value) <= leastWay)) {
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
