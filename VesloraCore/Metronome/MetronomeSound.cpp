// SPDX-License-Identifier: MIT
#include "VesloraCore/Metronome/MetronomeSound.h"

#include "VesloraCore/Text/Words.h"

#include <algorithm>
#include <cstddef>

namespace veslora {
namespace {

struct Names {
    std::string_view rawValue;
    const char* displayName;
};

/// In the order of the enumeration.
constexpr std::array<Names, allMetronomeSounds.size()> names{
    {{"click", translatable("MetronomeSounds", "Click")},
     {"woodblock", translatable("MetronomeSounds", "Woodblock")},
     {"hihat", translatable("MetronomeSounds", "Hi-hat")},
     {"beep", translatable("MetronomeSounds", "Beep")},
     {"silent", translatable("MetronomeSounds", "Silent")}}};

} // namespace

std::string_view rawValue(MetronomeSound sound) {
    return names[static_cast<std::size_t>(sound)].rawValue;
}

std::string_view displayName(MetronomeSound sound) {
    return names[static_cast<std::size_t>(sound)].displayName;
}

MetronomeSound metronomeSoundFrom(std::optional<std::string_view> text) {
    const auto* found = std::ranges::find_if(
        allMetronomeSounds, [text](MetronomeSound sound) { return text == rawValue(sound); });
    return found == allMetronomeSounds.end() ? MetronomeSound::click : *found;
}

} // namespace veslora
