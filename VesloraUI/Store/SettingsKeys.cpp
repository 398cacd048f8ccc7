// SPDX-License-Identifier: MIT
#include "VesloraUI/Store/SettingsKeys.h"

#include "VesloraCore/Island/LiveActivity.h"
#include "VesloraCore/Metronome/MetronomeSound.h"
#include "VesloraCore/Metronome/MetronomeTempo.h"
#include "VesloraCore/Metronome/TimeSignature.h"
#include "VesloraCore/Text/TerminalText.h"
#include "VesloraCore/Widgets/WidgetLayout.h"

#include <algorithm>
#include <limits>

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

namespace SettingsKeys {

namespace {

/// How the settings spell each of these.
template <class All>
Setting::Choices choicesOf(const All& all) {
    Setting::Choices choices;
    for (const auto& each : all) {
        choices.all.emplace_back(rawValue(each));
    }
    return choices;
}

template <std::size_t count>
Setting::Choices choicesOf(const std::array<std::string_view, count>& names) {
    return {{names.begin(), names.end()}};
}

Setting::Choices signatures() {
    Setting::Choices choices;
    for (const TimeSignature& signature : TimeSignature::all) {
        choices.all.push_back(signature.storedValue());
    }
    return choices;
}

/// No screen has another name, so any other text is as good as none.
std::string outputName(std::string_view text) {
    constexpr std::size_t longest = 255;
    const bool isName = text.size() <= longest && TerminalText::withoutControls(text) == text;
    return isName ? std::string(text) : std::string();
}

std::string layout(std::string_view text) {
    return WidgetLayout::fromStoredValue(text).storedValue();
}

constexpr ClosedRange noneOrMore{0, std::numeric_limits<double>::infinity()};
constexpr ClosedRange tempos{MetronomeTempo::range.lower, MetronomeTempo::range.upper};
constexpr Setting::Form layoutForm{
    layout, translatable("Settings", "names of widgets with commas between them, each once and with a size "
                                     "only where that is not its usual one")};
constexpr Setting::Form outputForm{
    outputName, translatable("Settings", "the name of a connector, of up to 255 bytes without controls")};

} // namespace

const std::vector<Setting>& all() {
    static const std::vector<Setting> settings{
        {hideInFullscreen, true},
        {hoverDelay, 0.1, noneOrMore},
        {displayChoice, std::string(rawValue(DisplayChoice::builtIn)),
         choicesOf(std::array{DisplayChoice::builtIn, DisplayChoice::main})},
        {displayOutput, std::string(), outputForm},
        {accent, "lime", choicesOf(accents)},
        {timerSound, std::string(timerSounds.front()), choicesOf(timerSounds)},
        {timerNotifications, true},
        {widgetLayout, WidgetLayout::defaultLayout().storedValue(), layoutForm},
        {widgetSpacingAutomatic, false},
        {widgetSpacing, 60.0, widgetSpacingRange},
        {liveActivityPriority, "music", choicesOf(allLiveActivityPriorities)},
        {musicShowOtherApps, true},
        {musicLiveActivity, true},
        {metronomeBPM, 120, tempos},
        {metronomeSignature, TimeSignature::common.display(), signatures()},
        {metronomeSound, "click", choicesOf(allMetronomeSounds)},
        {metronomeVolume, 0.8, ClosedRange{0, 1}},
        {metronomeAccent, true},
        {claudeApprovalAlerts, true},
        {claudeApprovalSound, false},
        {claudeFinishedActivity, true},
        {claudeWorkingActivity, true},
        {claudeAnswerFromIsland, true},
        // A pause is of here and now: "pause" and "resume" are for that.
        {alertsPausedUntil, 0.0, noneOrMore, true},
        {followDoNotDisturb, true},
        {checkForUpdates, true},
        // What was offered, or skipped, belongs to this installation.
        {updateCheckedAt, 0.0, noneOrMore, true},
        {updateSkipped, std::string(), {}, true},
        {updateShown, std::string(), {}, true},
        {updateShownAt, 0.0, noneOrMore, true},
        {settingsTab, std::string(), {}, true},
        {settingsPlace, std::string(), {}, true},
        {keepAwakeDisplay, false},
        {keepAwakeWhileClaude, true},
        {keepAwakeLiveActivity, true},
    };
    return settings;
}

const Setting* named(std::string_view key) {
    const auto found = std::ranges::find(all(), key, &Setting::key);
    return found == all().end() ? nullptr : &*found;
}

} // namespace SettingsKeys

} // namespace veslora
