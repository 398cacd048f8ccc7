// SPDX-License-Identifier: MIT
#include "VesloraCore/Music/AdapterState.h"

#include "VesloraCore/Text/Base64.h"
#include "VesloraCore/Text/Iso8601.h"

#include <algorithm>
#include <iterator>

namespace veslora {

namespace {

constexpr std::string_view bundleIdentifier = "bundleIdentifier";

std::vector<std::string_view> keysOf(const Json& object) {
    std::vector<std::string_view> keys;
    std::ranges::transform(object.members(), std::back_inserter(keys), &Json::Member::key);
    return keys;
}

/// The members of both; where they share a key, the newer one's value. In one pass, since adding them one by
/// one to the older object would take quadratic time where there are many.
Json merged(Json older, Json newer) {
    std::vector<std::string_view> keys;
    std::ranges::set_union(keysOf(older), keysOf(newer), std::back_inserter(keys));
    Json both = Json::makeObject();
    for (const std::string_view key : keys) {
        Json* value = newer.find(key);
        both.set(key, std::move(value ? *value : *older.find(key)));
    }
    return both;
}

double numberAt(const Json& payload, std::string_view key) {
    const Json* value = payload.find(key);
    return value ? value->number().value_or(0) : 0;
}

bool booleanAt(const Json& payload, std::string_view key, bool fallback) {
    const Json* value = payload.find(key);
    return value ? value->boolean().value_or(fallback) : fallback;
}

Timestamp timeOf(const Json& payload, Timestamp fallback) {
    const std::string* text = payload.stringAt("timestamp");
    return text ? Iso8601::parse(*text, Iso8601::Fraction::refused).value_or(fallback) : fallback;
}

} // namespace

bool AdapterState::apply(std::string_view line) {
    std::optional<Json> read = Json::parse(line);
    if (!read || read->textAt("type") != "data" || !read->objectAt("payload")) {
        return false;
    }
    Json news = std::move(*read->find("payload"));
    payload = booleanAt(*read, "diff", false) ? merged(std::move(payload), std::move(news)) : std::move(news);
    return true;
}

std::optional<NowPlaying> AdapterState::nowPlaying(Timestamp fallbackReadAt) const {
    NowPlaying playing{.source = MusicSource::from(payload.textAt(bundleIdentifier)),
                       .title = payload.textAt("title"),
                       .artist = payload.textAt("artist"),
                       .album = payload.textAt("album"),
                       .duration = numberAt(payload, "duration"),
                       .position = numberAt(payload, "elapsedTime"),
                       .readAt = timeOf(payload, fallbackReadAt),
                       .isPlaying = booleanAt(payload, "playing", false)};
    if (playing.title.empty()) {
        return std::nullopt;
    }
    if (const std::string* identifier = payload.stringAt("contentItemIdentifier")) {
        playing.trackID = *identifier;
    }
    return playing;
}

MusicControls AdapterState::controls() const {
    return {.canGoNext = booleanAt(payload, "canGoNext", true),
            .canGoPrevious = booleanAt(payload, "canGoPrevious", true),
            .canToggle = booleanAt(payload, "canPlay", true)};
}

bool AdapterState::isOfSpotify() const {
    return MusicSource::from(payload.textAt(bundleIdentifier)).isSpotify();
}

const std::string* AdapterState::artworkText() const {
    return payload.stringAt("artworkData");
}

std::optional<std::string> AdapterState::artwork() const {
    const std::string* text = artworkText();
    return text ? Base64::decode(*text) : std::nullopt;
}

} // namespace veslora
