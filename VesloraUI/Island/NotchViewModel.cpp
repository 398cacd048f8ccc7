// SPDX-License-Identifier: MIT
#include "VesloraUI/Island/NotchViewModel.h"

#include <utility>

namespace veslora {

NotchViewModel::NotchViewModel(const NotchGeometry& geometry, IslandModels& models,
                               const IslandPresentation& presentation)
    : m_geometry(geometry), m_models(models), m_presentation(presentation), m_shown(look()) {}

void NotchViewModel::setExpanded(bool isExpanded) {
    m_isExpanded = isExpanded;
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
    case IslandState::metronomeActivity:
        return Metronome;
    case IslandState::musicActivity:
        return Music;
    case IslandState::claudeAlert:
        return hasRequest ? ClaudeRequest : ClaudeNotice;
    case IslandState::expanded:
        return Rack;
    default:
        return Nothing;
    }
}

NotchViewModel::Shown NotchViewModel::look() const {
    const ClosedIslandActivity& activity = m_presentation.activity;
    const bool hasRequest = m_presentation.requestId.has_value();
    Shown shown;
    shown.state = islandStateOf(m_isExpanded, activity.kind);
    shown.content = contentOf(shown.state, hasRequest);
    if (shown.content == ClaudeRequest) {
        shown.subject = QString::fromStdString(*m_presentation.requestId);
    } else if (shown.content == ClaudeNotice) {
        shown.subject = QString::fromStdString(m_presentation.waitingId.value_or(std::string()));
    }
    shown.wingWidth = activity.wingWidth.value_or(0);
    shown.layout = islandLayout({.state = shown.state,
                                 .notchSize = m_geometry.notch.size(),
                                 .alertSize = m_geometry.alert.size(),
                                 .expandedSize = m_geometry.expanded.size(),
                                 .wingWidth = activity.wingWidth,
                                 .hasPendingRequests = hasRequest,
                                 .islandWidth = m_models.rack()->islandWidth(),
                                 .isEditing = m_models.rack()->isEditing(),
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
    const Shown before = std::exchange(m_shown, look());
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
