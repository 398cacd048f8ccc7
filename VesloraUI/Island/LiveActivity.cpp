// SPDX-License-Identifier: MIT
#include "VesloraUI/Island/LiveActivity.h"

#include "VesloraUI/Claude/Monitors/AgentsModel.h"
#include "VesloraUI/KeepAwake/KeepAwakeModel.h"
#include "VesloraUI/Platform/TextMeasuring.h"
#include "VesloraUI/Store/Defaults.h"
#include "VesloraUI/Store/SettingsKeys.h"
#include "VesloraUI/Timer/TimerModel.h"

namespace veslora {

namespace {

ClosedIslandInputs gather(const IslandModels& models) {
    ClosedIslandInputs inputs;
    if (models.agents) {
        inputs.agents.isWaitingForApproval = !models.agents->waitingForApproval().empty();
        inputs.agents.hasPendingRequests = !models.agents->pendingRequests().empty();
        inputs.agents.hasFinished = models.agents->latestFinished().has_value();
        inputs.agents.hasWorking = models.agents->longestWorking().has_value();
    }
    if (models.keepAwake) {
        inputs.keepAwake = models.keepAwake->state();
    }
    if (models.timer) {
        inputs.timer = {models.timer->isShowingDone(), models.timer->countdown()};
    }
    return inputs;
}

ClosedIslandSettings gather(const Defaults& settings) {
    ClosedIslandSettings result;
    result.musicLiveActivity = settings.boolValue(SettingsKeys::musicLiveActivity);
    result.liveActivityPriority =
        liveActivityPriorityFrom(settings.stringValue(SettingsKeys::liveActivityPriority));
    result.claudeApprovalAlerts = settings.boolValue(SettingsKeys::claudeApprovalAlerts);
    result.claudeFinishedActivity = settings.boolValue(SettingsKeys::claudeFinishedActivity);
    result.claudeWorkingActivity = settings.boolValue(SettingsKeys::claudeWorkingActivity);
    result.keepAwakeLiveActivity = settings.boolValue(SettingsKeys::keepAwakeLiveActivity);
    return result;
}

} // namespace

ClosedIslandActivity closedIslandActivity(const IslandModels& models, const Defaults& settings,
                                          const TextMeasuring& measuring, Timestamp now) {
    const auto measure = [&](const std::string& text) { return measuring.wingTextWidth(text); };
    return closedIslandActivity(gather(models), gather(settings), measure, now);
}

} // namespace veslora
