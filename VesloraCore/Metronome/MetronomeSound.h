// SPDX-License-Identifier: MIT
// The sounds that a beat may have, by the names under which settings and people know them.
#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace veslora {

enum class MetronomeSound { click, woodblock, hihat, beep, silent };

inline constexpr std::array allMetronomeSounds{MetronomeSound::click, MetronomeSound::woodblock,
                                               MetronomeSound::hihat, MetronomeSound::beep,
                                               MetronomeSound::silent};

/// How the settings spell it, as in "hihat".
[[nodiscard]] std::string_view rawValue(MetronomeSound sound);
/// What people call it, untranslated: "Hi-hat". Ends with a null.
[[nodiscard]] std::string_view displayName(MetronomeSound sound);
/// The click for an absent text and for any that is no raw value.
[[nodiscard]] MetronomeSound metronomeSoundFrom(std::optional<std::string_view> text);

} // namespace veslora
