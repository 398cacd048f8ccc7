// SPDX-License-Identifier: MIT
// The only place where the key of a setting is spelled, with what each may hold and its default.
#pragma once

#include "VesloraCore/Text/Words.h"
#include "VesloraUI/Store/Setting.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace veslora {

class Defaults;

/// The screen that the island is on.
enum class DisplayChoice : std::uint8_t { builtIn, main };

[[nodiscard]] std::string_view rawValue(DisplayChoice choice);
/// What people call it, untranslated. Ends with a null.
[[nodiscard]] std::string_view displayName(DisplayChoice choice);
/// The built-in display for an absent text and for any that is no raw value.
[[nodiscard]] DisplayChoice displayChoiceFrom(std::optional<std::string_view> rawValue);

/// Words with "claude" in them serve every agent; the spelling stays for the sake of existing files.
namespace SettingsKeys {

inline constexpr std::string_view hideInFullscreen = "hideInFullscreen";
inline constexpr std::string_view hoverDelay = "hoverDelay";           ///< seconds, none or more
inline constexpr std::string_view checkForUpdates = "checkForUpdates"; ///< once a day, by itself
/// Seconds since 1970 at which the program last looked for updates; 0 for never.
inline constexpr std::string_view updateCheckedAt = "updateCheckedAt";
/// The version that the user does not want to be offered; empty for none.
inline constexpr std::string_view updateSkipped = "updateSkipped";
/// The version that was last offered, and when, in seconds since 1970.
inline constexpr std::string_view updateShown = "updateShown";
inline constexpr std::string_view updateShownAt = "updateShownAt";
/// How the settings window was left: the name of a `SettingsPage`, and "x,y,width,height" in points, as the
/// toolkit counts them. Empty for never.
inline constexpr std::string_view settingsTab = "settingsTab";
inline constexpr std::string_view settingsPlace = "settingsPlace";
inline constexpr std::string_view displayChoice = "displayChoice"; ///< of a `DisplayChoice`
/// Name of the connector whose screen counts before `displayChoice`, as in "DP-1"; empty for none.
inline constexpr std::string_view displayOutput = "displayOutput";
inline constexpr std::string_view accent = "accent";         ///< one of `accents`
inline constexpr std::string_view timerSound = "timerSound"; ///< one of `timerSounds`
inline constexpr std::string_view timerNotifications = "timerNotifications";
inline constexpr std::string_view widgetLayout = "widgetLayout"; ///< of a `WidgetLayout`
inline constexpr std::string_view widgetSpacingAutomatic = "widgetSpacingAutomatic";
inline constexpr std::string_view widgetSpacing = "widgetSpacing"; ///< points, in `widgetSpacingRange`
inline constexpr std::string_view liveActivityPriority = "liveActivityPriority"; ///< "music" or "timer"
inline constexpr std::string_view musicShowOtherApps = "musicShowOtherApps";
inline constexpr std::string_view musicLiveActivity = "musicLiveActivity";
inline constexpr std::string_view metronomeBPM = "metronomeBPM";
inline constexpr std::string_view metronomeSignature = "metronomeSignature"; ///< of a `TimeSignature`
inline constexpr std::string_view metronomeSound = "metronomeSound";
inline constexpr std::string_view metronomeVolume = "metronomeVolume"; ///< 0 to 1
inline constexpr std::string_view metronomeAccent = "metronomeAccent";
inline constexpr std::string_view claudeApprovalAlerts = "claudeApprovalAlerts";
inline constexpr std::string_view claudeApprovalSound = "claudeApprovalSound";
inline constexpr std::string_view claudeFinishedActivity = "claudeFinishedActivity";
inline constexpr std::string_view claudeWorkingActivity = "claudeWorkingActivity";
inline constexpr std::string_view claudeAnswerFromIsland = "claudeAnswerFromIsland";
/// Seconds since 1970 at which the user's pause of alerts is over; 0 for none.
inline constexpr std::string_view alertsPausedUntil = "alertsPausedUntil";
inline constexpr std::string_view followDoNotDisturb = "followDoNotDisturb";
inline constexpr std::string_view keepAwakeDisplay = "keepAwakeDisplay";
inline constexpr std::string_view keepAwakeWhileClaude = "keepAwakeWhileClaude";
inline constexpr std::string_view keepAwakeLiveActivity = "keepAwakeLiveActivity";

/// The colours to choose from, in the order of an `Accent`.
inline constexpr std::array<std::string_view, 4> accents{"lime", "cyan", "amber", "white"};

/// The sounds that may end a timer. The last plays nothing.
inline constexpr std::array<std::string_view, 5> timerSounds{
    translatable("TimerSounds", "Glass"), translatable("TimerSounds", "Ping"),
    translatable("TimerSounds", "Hero"), translatable("TimerSounds", "Submarine"),
    translatable("TimerSounds", "None")};

/// Every reader of `widgetSpacing` holds it to this; the store keeps what was written.
inline constexpr ClosedRange widgetSpacingRange{8, 80};

/// Every setting, in the order of the list above.
[[nodiscard]] const std::vector<Setting>& all();
/// Null for a text that is no key.
[[nodiscard]] const Setting* named(std::string_view key);

/// Registers the default of every key. To be called once on each store before anything reads it.
void registerDefaults(Defaults& settings);

} // namespace SettingsKeys

} // namespace veslora
