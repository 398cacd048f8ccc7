// SPDX-License-Identifier: MIT
#include "VesloraUI/Store/SettingsKeys.h"

#include "VesloraCore/Metronome/TimeSignature.h"
#include "VesloraCore/Widgets/WidgetLayout.h"
#include "VesloraUI/Store/Defaults.h"

namespace veslora {

std::string_view rawValue(DisplayChoice choice) {
    return choice == DisplayChoice::main ? "main" : "builtIn";
}

std::string_view displayName(DisplayChoice choice) {
    return choice == DisplayChoice::main ? translatable("Displays", "Main display")
                                         : translatable("Displays", "Built-in display");
}

DisplayChoice displayChoiceFrom(std::optional<std::string_view> rawValue) {
    return rawValue == veslora::rawValue(DisplayChoice::main) ? DisplayChoice::main : DisplayChoice::builtIn;
}

void SettingsKeys::registerDefaults(Defaults& settings) {
    settings.registerDefaults({
        {hideInFullscreen, true},
        {hoverDelay, 0.1},
        {displayChoice, std::string(rawValue(DisplayChoice::builtIn))},
        {displayOutput, std::string()},
        {accent, "lime"},
        {timerSound, std::string(timerSounds.front())},
        {timerNotifications, true},
        {widgetLayout, WidgetLayout::defaultLayout().storedValue()},
        {widgetSpacingAutomatic, false},
        {widgetSpacing, 60.0},
        {liveActivityPriority, "music"},
        {musicShowOtherApps, true},
        {musicLiveActivity, true},
        {metronomeBPM, 120},
        {metronomeSignature, TimeSignature::common.display()},
        {metronomeSound, "click"},
        {metronomeVolume, 0.8},
        {metronomeAccent, true},
        {claudeApprovalAlerts, true},
        {claudeApprovalSound, false},
        {claudeFinishedActivity, true},
        {claudeWorkingActivity, true},
        {claudeAnswerFromIsland, true},
        {alertsPausedUntil, 0.0},
        {followDoNotDisturb, true},
        {keepAwakeDisplay, false},
        {keepAwakeWhileClaude, true},
        {keepAwakeLiveActivity, true},
    });
}

} // namespace veslora
