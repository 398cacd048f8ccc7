// SPDX-License-Identifier: MIT
#include "VesloraUI/Island/IslandPresentation.h"

#include "VesloraUI/Platform/TextMeasuring.h"
#include "VesloraUI/Store/Defaults.h"
#include "VesloraUI/Store/SettingsKeys.h"
#include "VesloraUI/Support/ReadersWords.h"
#include "VesloraUI/Widgets/IslandModels.h"

namespace veslora {

namespace {

ClosedIslandSettings gather(const Defaults& settings, const AgentsModel& agents) {
    ClosedIslandSettings result;
    result.musicLiveActivity = settings.boolValue(SettingsKeys::musicLiveActivity);
    result.liveActivityPriority =
        liveActivityPriorityFrom(settings.stringValue(SettingsKeys::liveActivityPriority));
    result.claudeApprovalAlerts =
        settings.boolValue(SettingsKeys::claudeApprovalAlerts) && !agents.areAlertsPaused();
    result.claudeFinishedActivity = settings.boolValue(SettingsKeys::claudeFinishedActivity);
    result.claudeWorkingActivity = settings.boolValue(SettingsKeys::claudeWorkingActivity);
    result.keepAwakeLiveActivity = settings.boolValue(SettingsKeys::keepAwakeLiveActivity);
    return result;
}

/// Takes in what waits for the user.
void readWaits(const AgentsModel& agents, IslandPresentation& presentation) {
    for (const ClaudeSessionSummary& session : agents.waitingForApproval()) {
        const auto& approval = std::get<ClaudeStatus::NeedsApproval>(session.status);
        presentation.approvals.insert(session.id + "@" + std::to_string(approval.since));
        if (!presentation.waitingId) {
            presentation.waitingId = session.id;
        }
    }
    const auto& requests = agents.pendingRequests();
    if (!requests.empty()) {
        presentation.requestId = requests.front().id;
    }
}

} // namespace

const IslandPresentation& PresentationJudge::judge(Timestamp now) {
    ++m_judgements;
    m_presentation = {};
    readWaits(*m_models.agents(), m_presentation);
    ClosedIslandInputs inputs;
    inputs.agents.isWaitingForApproval = m_presentation.waitingId.has_value();
    inputs.agents.hasPendingRequests = m_presentation.requestId.has_value();
    inputs.agents.hasFinished = m_models.agents()->latestFinished().has_value();
    inputs.agents.hasWorking = m_models.agents()->longestWorking().has_value();
    inputs.keepAwake = m_models.keepAwake()->state();
    inputs.metronomeIsRunning = m_models.metronome()->isRunning();
    inputs.track = m_models.music()->track();
    inputs.musicPausedSince = m_models.music()->pausedSince();
    inputs.timer = {m_models.timer()->isShowingDone(), m_models.timer()->countdown()};
    m_presentation.activity = closedIslandActivity(
        inputs, gather(m_settings, *m_models.agents()),
        [&](const std::string& text) { return m_measuring.wingTextWidth(text); }, now, readersWords());
    return m_presentation;
}

} // namespace veslora
