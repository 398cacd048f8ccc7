// SPDX-License-Identifier: MIT
#include "MediaAdapter/Player.h"

#include <algorithm>
#include <utility>

namespace veslora {

double Player::positionAt(Timestamp time) const {
    if (status != PlaybackStatus::playing) {
        return position;
    }
    const double moved = std::max(0.0, position + (time - positionReadAt));
    return track.length ? std::min(moved, *track.length) : moved;
}

void Player::setPosition(double seconds, Timestamp time) {
    // At the very end players are a little late to say that it has come.
    constexpr double overshoot = 1;
    const double last = track.length.value_or(longestTrack);
    position = seconds >= 0 && seconds <= last + overshoot ? std::min(seconds, last) : 0;
    positionReadAt = time;
}

void Player::setStatus(PlaybackStatus newStatus, Timestamp time) {
    setPosition(positionAt(time), time);
    status = newStatus;
}

void Player::setTrack(Track newTrack, Timestamp time) {
    const bool isAnother = newTrack.id != track.id || newTrack.title != track.title;
    const double now = isAnother ? 0 : positionAt(time);
    track = std::move(newTrack);
    setPosition(now, time);
}

} // namespace veslora
