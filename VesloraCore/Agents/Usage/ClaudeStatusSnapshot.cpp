// SPDX-License-Identifier: MIT
// See ClaudeStatusSnapshot.h.
#include "VesloraCore/Agents/Usage/ClaudeStatusSnapshot.h"

#include "VesloraCore/Agents/Usage/UsageNumbers.h"
#include "VesloraCore/Text/Iso8601.h"
#include "VesloraCore/Text/Json.h"

#include <algorithm>

namespace veslora {

namespace {

using UsageNumbers::numberAt;
using UsageNumbers::percentAt;

const Json& objectOrEmpty(const Json& parent, std::string_view key) {
    static const Json empty = Json::makeObject();
    const Json* object = parent.objectAt(key);
    return object ? *object : empty;
}

// A date as text, or seconds since 1970.
std::optional<Timestamp> dateAt(const Json& object, std::string_view key) {
    if (const std::string* text = object.stringAt(key)) {
        return Iso8601::parse(*text);
    }
    return numberAt(object, key);
}

std::optional<ClaudeLimit> limitFrom(const Json& object) {
    for (const char* key : {"utilization", "used_percentage", "percent"}) {
        if (const std::optional<double> percent = percentAt(object, key)) {
            return ClaudeLimit{*percent, dateAt(object, "resets_at")};
        }
    }
    return std::nullopt;
}

std::optional<ClaudeLimit> limitAt(const Json& object, std::string_view key) {
    const Json* limit = object.objectAt(key);
    return limit ? limitFrom(*limit) : std::nullopt;
}

// The list form of the limits. It never takes the place of what is there already.
void fillFromList(const Json& list, ClaudeStatusSnapshot& snapshot) {
    if (!std::ranges::all_of(list.items(), &Json::isObject)) {
        return;
    }
    for (const Json& limit : list.items()) {
        const std::string kind = limit.textAt("kind");
        if (kind == "session" && !snapshot.fiveHour) {
            snapshot.fiveHour = limitFrom(limit);
        } else if (kind == "weekly_all" && !snapshot.week) {
            snapshot.week = limitFrom(limit);
        }
    }
}

void readLimits(const Json& root, ClaudeStatusSnapshot& snapshot) {
    const Json& limits = objectOrEmpty(root, "rate_limits");
    snapshot.fiveHour = limitAt(limits, "five_hour");
    snapshot.week = limitAt(limits, "seven_day");
    if (const Json* list = limits.find("limits")) {
        fillFromList(*list, snapshot);
    }
    const Json* available = root.find("rate_limits_available");
    snapshot.limitsAvailable = !available || available->boolean().value_or(true);
}

// What the last request sent, as a share of the window. What came back is no part of it.
std::optional<double> usedShare(const Json& window, std::optional<std::int64_t> size) {
    const Json* usage = window.objectAt("current_usage");
    if (!usage || !size || *size <= 0) {
        return std::nullopt;
    }
    double sum = 0;
    for (const char* key : {"input_tokens", "cache_creation_input_tokens", "cache_read_input_tokens"}) {
        sum += numberAt(*usage, key).value_or(0);
    }
    return sum / static_cast<double>(*size) * 100;
}

void readContext(const Json& root, ClaudeStatusSnapshot& snapshot) {
    const Json& window = objectOrEmpty(root, "context_window");
    snapshot.contextSize = UsageNumbers::integerAt(window, "context_window_size");
    snapshot.contextPercent = percentAt(window, "used_percentage");
    if (!snapshot.contextPercent) {
        snapshot.contextPercent = UsageNumbers::percent(usedShare(window, snapshot.contextSize));
    }
}

} // namespace

std::optional<ClaudeStatusSnapshot> ClaudeStatusSnapshot::parse(std::string_view data, Timestamp receivedAt) {
    const std::optional<Json> root = Json::parse(data);
    if (!root) {
        return std::nullopt;
    }
    ClaudeStatusSnapshot snapshot;
    snapshot.sessionId = root->textAt("session_id");
    if (snapshot.sessionId.empty()) {
        return std::nullopt;
    }
    if (const std::string* name = objectOrEmpty(*root, "model").stringAt("display_name")) {
        snapshot.model = *name;
    }
    readContext(*root, snapshot);
    readLimits(*root, snapshot);
    snapshot.receivedAt = receivedAt;
    return snapshot;
}

} // namespace veslora
