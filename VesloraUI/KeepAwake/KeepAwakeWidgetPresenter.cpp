// SPDX-License-Identifier: MIT
#include "VesloraUI/KeepAwake/KeepAwakeWidgetPresenter.h"

#include "VesloraCore/KeepAwake/KeepAwakeText.h"
#include "VesloraUI/Support/LocalTime.h"

namespace veslora {

namespace {

constexpr double hour = 3600;

QString label(double seconds) {
    return seconds < hour ? KeepAwakeWidgetPresenter::tr("%1M").arg(static_cast<int>(seconds / 60))
                          : KeepAwakeWidgetPresenter::tr("%1H").arg(static_cast<int>(seconds / hour));
}

KeepAwakePreset presetOf(std::optional<double> seconds) {
    if (!seconds) {
        return {QStringLiteral("∞"), KeepAwakeWidgetPresenter::tr("Stay awake until stopped"),
                QStringLiteral("infinity")};
    }
    return {label(*seconds), KeepAwakeWidgetPresenter::tr("Stay awake for %1").arg(label(*seconds)), {}};
}

} // namespace

void KeepAwakeWidgetPresenter::start() {
    follow(m_keepAwake, &KeepAwakeModel::stateChanged, &KeepAwakeModel::holdChanged);
}

void KeepAwakeWidgetPresenter::setDate(double date) {
    m_date = date;
    refresh();
}

void KeepAwakeWidgetPresenter::read() {
    const KeepAwakeState& state = m_keepAwake->state();
    const auto remaining = m_keepAwake->remaining();
    const bool isOn = m_keepAwake->isOn();
    show(m_shown,
         {.timeText = QString::fromStdString(KeepAwakeText::remaining(remaining, state.isIndefinite)),
          .detail = currentDetail(),
          .isLit = isOn || m_keepAwake->hold(),
          .isOn = isOn,
          .isTimed = remaining.has_value(),
          .isIndefinite = state.isIndefinite,
          .whileClaudeWorks = state.whileClaudeWorks});
}

QString KeepAwakeWidgetPresenter::currentDetail() const {
    const auto& hold = m_keepAwake->hold();
    if (!m_keepAwake->isOn()) {
        const bool isForAgent = hold && hold->reason == KeepAwakeHold::Reason::claude;
        return isForAgent ? tr("An agent is working") : tr("Sleeps as usual");
    }
    const auto end = m_keepAwake->end();
    QStringList parts{end ? tr("Until %1").arg(LocalTime::shortTime(*end)) : tr("Until stopped")};
    if (hold && hold->display) {
        parts << tr("screen on");
    }
    return parts.join(QStringLiteral(" · "));
}

QVariantList KeepAwakeWidgetPresenter::presets() {
    QVariantList result;
    for (const auto& seconds : KeepAwakeState::presets) {
        result << QVariant::fromValue(presetOf(seconds));
    }
    return result;
}

void KeepAwakeWidgetPresenter::startPreset(int preset) {
    const auto place = static_cast<std::size_t>(preset);
    if (place < KeepAwakeState::presets.size()) {
        m_keepAwake->start(KeepAwakeState::presets[place]);
    }
}

void KeepAwakeWidgetPresenter::adjust(int steps) {
    const auto before = m_keepAwake->remaining();
    m_keepAwake->adjust(steps);
    if (m_keepAwake->remaining() != before) {
        environment().haptics().perform(HapticPattern::alignment);
    }
}

void KeepAwakeWidgetPresenter::stop() {
    m_keepAwake->stop();
}

void KeepAwakeWidgetPresenter::toggleAgents() {
    m_keepAwake->setWhileClaudeWorks(!m_keepAwake->whileClaudeWorks());
}

} // namespace veslora
