// SPDX-License-Identifier: MIT
#include "VesloraCore/Music/MusicSourcePicker.h"

namespace veslora::MusicSourcePicker {

std::optional<NowPlaying> pick(const std::optional<NowPlaying>& spotify,
                               const std::optional<NowPlaying>& other, bool showOtherApps) {
    if (other && other->source.isSpotify()) {
        return spotify ? spotify : other;
    }
    const bool mayShowOther = other && showOtherApps;
    if (!spotify) {
        return mayShowOther ? other : std::nullopt;
    }
    const bool isOvertaken = mayShowOther && !spotify->isPlaying && spotify->readAt <= other->readAt;
    return isOvertaken ? other : spotify;
}

} // namespace veslora::MusicSourcePicker
