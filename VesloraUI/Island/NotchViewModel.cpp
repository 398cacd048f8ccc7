// SPDX-License-Identifier: MIT
#include "VesloraUI/Island/NotchViewModel.h"

namespace veslora {

NotchViewModel::NotchViewModel(const NotchGeometry& geometry, const IslandModels& models, RackModel& rack,
                               SystemSampler& sampler, const Defaults& settings,
                               const TextMeasuring& measuring, Timestamp now)
    : m_geometry(geometry), m_models(models), m_rack(rack), m_sampler(sampler), m_settings(settings),
      m_measuring(measuring), m_clock(now) {
    connect(models.agents, &AgentsModel::changed, this, &NotchViewModel::refresh);
    connect(models.keepAwake, &KeepAwakeModel::stateChanged, this, &NotchViewModel::refresh);
    connect(models.timer, &TimerModel::countdownChanged, this, &NotchViewModel::refresh);
    connect(models.timer, &TimerModel::isShowingDoneChanged, this, &NotchViewModel::refresh);
    connect(&rack, &RackModel::islandWidthChanged, this, &NotchViewModel::refresh);
    connect(&rack, &RackModel::isEditingChanged, this, &NotchViewModel::refresh);
    m_shown = judge();
}

void NotchViewModel::setExpanded(bool isExpanded) {
    m_isExpanded = isExpanded;
    refresh();
}

void NotchViewModel::setClock(Timestamp clock) {
    m_clock = clock;
    refresh();
}

NotchViewModel::Content NotchViewModel::contentOf(IslandState state, bool hasRequest) {
    switch (state) {
    case IslandState::liveActivity:
        return TimerRunning;
    case IslandState::alert:
        return TimerDone;
    case IslandState::claudeActivity:
        return ClaudeFinished;
    case IslandState::claudeWorkingActivity:
        return ClaudeWorking;
    case IslandState::keepAwakeActivity:
        return KeepAwake;
    case IslandState::claudeAlert:
        return hasRequest ? ClaudeRequest : ClaudeNotice;
    case IslandState::expanded:
        return Rack;
    default:
        return Nothing;
    }
}

NotchViewModel::Shown NotchViewModel::judge() const {
    const auto activity = closedIslandActivity(m_models, m_settings, m_measuring, m_clock);
    const auto requests = m_models.agents->pendingRequests();
    Shown shown;
    shown.state = islandStateOf(m_isExpanded, activity.kind);
    shown.content = contentOf(shown.state, !requests.empty());
    if (shown.content == ClaudeRequest) {
        shown.subject = QString::fromStdString(requests.front().id);
    } else if (shown.content == ClaudeNotice) {
        const auto waiting = m_models.agents->waitingForApproval();
        shown.subject = waiting.empty() ? QString() : QString::fromStdString(waiting.front().id);
    }
    shown.wingWidth = activity.wingWidth.value_or(0);
    shown.layout = islandLayout({.state = shown.state,
                                 .notchSize = m_geometry.notch.size(),
                                 .alertSize = m_geometry.alert.size(),
                                 .expandedSize = m_geometry.expanded.size(),
                                 .wingWidth = activity.wingWidth,
                                 .hasPendingRequests = !requests.empty(),
                                 .islandWidth = m_rack.islandWidth(),
                                 .isEditing = m_rack.isEditing(),
                                 .screenWidth = m_geometry.screenWidth});
    return shown;
}

QString NotchViewModel::contentIdentity() const {
    return QStringLiteral("%1/%2").arg(m_shown.content).arg(m_shown.subject);
}

void NotchViewModel::alertIsOnScreen(const QString& identity) {
    if (!m_isAlertOnScreen && identity == contentIdentity()) {
        m_isAlertOnScreen = true;
        emit alertCameOnScreen();
    }
}

void NotchViewModel::refresh() {
    const Shown before = std::exchange(m_shown, judge());
    if (before.content != m_shown.content || before.subject != m_shown.subject) {
        m_isAlertOnScreen = false;
        emit contentChanged();
    }
    if (before.layout != m_shown.layout || before.wingWidth != m_shown.wingWidth ||
        before.state != m_shown.state) {
        emit layoutChanged();
    }
}

} // namespace veslora
