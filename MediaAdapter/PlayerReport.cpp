// SPDX-License-Identifier: MIT
#include "MediaAdapter/PlayerReport.h"

#include "MediaAdapter/PlayerNames.h"

#include <charconv>
#include <cmath>
#include <ctime>
#include <optional>
#include <utility>

namespace veslora {
namespace {

/// A number with milliseconds at most.
Json number(double value) {
    constexpr double perSecond = 1000;
    char text[64];
    const auto end = std::to_chars(text, text + sizeof text, std::round(value * perSecond) / perSecond);
    return Json::parse(std::string_view(text, end.ptr)).value_or(Json());
}

std::string dateText(Timestamp second) {
    const auto time = static_cast<std::time_t>(second);
    std::tm parts{};
    char text[32];
    const bool isDate = gmtime_r(&time, &parts) != nullptr;
    return {text, isDate ? std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &parts) : 0};
}

void setText(Json& payload, std::string_view key, const std::string& text) {
    if (!text.empty()) {
        payload.set(key, Json::makeString(text));
    }
}

void setFlag(Json& payload, std::string_view key, std::optional<bool> flag) {
    if (flag) {
        payload.set(key, Json::makeBoolean(*flag));
    }
}

} // namespace

/// The second that follows, never the one before: who compares it with what another program said a moment
/// earlier must not find this to be the older news.
PlayerReport::Stamp PlayerReport::stampOf(const Player& player) {
    Stamp stamp{player.name, player.trackIdentifier, player.status};
    stamp.second = std::ceil(player.positionReadAt);
    stamp.elapsed = player.position;
    if (player.status == PlaybackStatus::playing) {
        stamp.elapsed += stamp.second - player.positionReadAt;
    }
    return stamp;
}

/// Keeps what was said for as long as a reader comes to the same position from it.
void PlayerReport::update(const Stamp& stamp) {
    constexpr double noticeable = 0.1;
    const bool isPlaying = stamp.status == PlaybackStatus::playing;
    const double expected = m_stamp.elapsed + (isPlaying ? stamp.second - m_stamp.second : 0);
    const bool isSame = stamp.player == m_stamp.player && stamp.track == m_stamp.track &&
                        stamp.status == m_stamp.status && std::abs(stamp.elapsed - expected) < noticeable;
    if (!isSame) {
        m_stamp = stamp;
    }
}

Json PlayerReport::payload(const Player& player, const std::string& artwork) {
    if (player.status == PlaybackStatus::stopped && player.track.title.empty()) {
        return nothing();
    }
    update(stampOf(player));
    Json payload = Json::makeObject();
    setText(payload, "title", player.track.title);
    setText(payload, "artist", player.track.artist);
    setText(payload, "album", player.track.album);
    if (player.track.length) {
        payload.set("duration", number(*player.track.length));
    }
    payload.set("elapsedTime", number(m_stamp.elapsed));
    setText(payload, "timestamp", dateText(m_stamp.second));
    payload.set("playing", Json::makeBoolean(player.status == PlaybackStatus::playing));
    setText(payload, "bundleIdentifier", PlayerNames::bundleIdentifier(player.desktopEntry, player.name));
    setText(payload, "contentItemIdentifier", player.trackIdentifier);
    setText(payload, "artworkData", artwork);
    setFlag(payload, "canGoNext", player.canGoNext);
    setFlag(payload, "canGoPrevious", player.canGoPrevious);
    setFlag(payload, "canPlay", player.canPlay);
    return payload;
}

Json PlayerReport::nothing() {
    m_stamp = {};
    return Json::makeObject();
}

} // namespace veslora
