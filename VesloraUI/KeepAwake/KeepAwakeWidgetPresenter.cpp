// SPDX-License-Identifier: MIT
#include "VesloraUI/KeepAwake/KeepAwakeWidgetPresenter.h"

#include "VesloraCore/KeepAwake/KeepAwakeText.h"
#include "VesloraUI/Platform/Observable.h"
#include "VesloraUI/Style/ViewEnvironment.h"
#include "VesloraUI/Support/LocalTime.h"

namespace veslora {

namespace {

constexpr double hour = 3600;

using Presenter = KeepAwakeWidgetPresenter;

QString label(double seconds) {
    return seconds < hour ? Presenter::tr("%1M").arg(static_cast<int>(seconds / 60))
                          : Presenter::tr("%1H").arg(static_cast<int>(seconds / hour));
}

KeepAwakePreset presetOf(std::optional<double> seconds) {
    if (!seconds) {
        return {QStringLiteral("∞"), Presenter::tr("Stay awake until stopped"), QStringLiteral("infinity")};
    }
    return {label(*seconds), Presenter::tr("Stay awake for %1").arg(label(*seconds)), {}};
}

} // namespace

void KeepAwakeWidgetPresenter::componentComplete() {
    m_isComplete = true;
    connect(m_keepAwake, &KeepAwakeModel::stateChanged, this, &KeepAwakeWidgetPresenter::read);
    connect(m_keepAwake, &KeepAwakeModel::holdChanged, this, &KeepAwakeWidgetPresenter::read);
    read();
}

void KeepAwakeWidgetPresenter::setDate(double date) {
    m_date = date;
    read();
}

void KeepAwakeWidgetPresenter::read() {
    if (!m_isComplete) {
        return;
    }
    const KeepAwakeState& state = m_keepAwake->state();
    const auto remaining = m_keepAwake->remaining();
    const bool isOn = m_keepAwake->isOn();
    const Session session{.isLit = isOn || m_keepAwake->hold(),
                          .isOn = isOn,
                          .isTimed = remaining.has_value(),
                          .isIndefinite = state.isIndefinite,
                          .whileClaudeWorks = state.whileClaudeWorks};
    assign(this, m_session, session, &KeepAwakeWidgetPresenter::sessionChanged);
    assign(this, m_timeText, QString::fromStdString(KeepAwakeText::remaining(remaining, state.isIndefinite)),
           &KeepAwakeWidgetPresenter::timeTextChanged);
    assign(this, m_detail, currentDetail(), &KeepAwakeWidgetPresenter::detailChanged);
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

void KeepAwakeWidgetPresenter::start(int preset) {
    const auto place = static_cast<std::size_t>(preset);
    if (place < KeepAwakeState::presets.size()) {
        m_keepAwake->start(KeepAwakeState::presets[place]);
    }
}

void KeepAwakeWidgetPresenter::adjust(int steps) {
    const auto before = m_keepAwake->remaining();
    m_keepAwake->adjust(steps);
    if (m_keepAwake->remaining() != before) {
        ViewEnvironment::of(qmlEngine(this)).haptics().perform(HapticPattern::alignment);
    }
}

void KeepAwakeWidgetPresenter::stop() {
    m_keepAwake->stop();
}

void KeepAwakeWidgetPresenter::toggleAgents() {
    m_keepAwake->setWhileClaudeWorks(!m_keepAwake->whileClaudeWorks());
}

} // namespace veslora
