// SPDX-License-Identifier: MIT
#include "MediaAdapter/TrackIdentity.h"

#include "VesloraCore/Text/SipHash.h"

#include <cstdio>

namespace veslora {
namespace {

/// A digest, since the texts may be long.
std::string digestOf(const Track& track) {
    const std::string length = track.length ? std::to_string(*track.length) : "";
    const auto digest = SipHash::digest({}, track.title + '\n' + track.artist + '\n' + length);
    char text[17];
    std::snprintf(text, sizeof text, "%016llx", static_cast<unsigned long long>(digest.first));
    return text;
}

} // namespace

std::string TrackIdentity::identify(const Track& track) {
    // Between two tracks browsers give none, and then the same as before.
    if (track.id.empty()) {
        return track.title.empty() ? std::string() : "#" + digestOf(track);
    }
    const bool isSameId = track.id == m_id;
    if (!isSameId) {
        m_isAmbiguous = false;
        m_title.clear();
    }
    // Players fill a track in by and by, so that a title which only comes is no other track's.
    if (isSameId && !m_title.empty() && track.title != m_title) {
        m_isAmbiguous = true;
    }
    m_id = track.id;
    if (!track.title.empty()) {
        m_title = track.title;
    }
    return m_isAmbiguous && !track.title.empty() ? track.id + "#" + digestOf(track) : track.id;
}

} // namespace veslora
