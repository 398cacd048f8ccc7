// SPDX-License-Identifier: MIT
// See CodexUsageLine.h.
#include "VesloraCore/Agents/Usage/CodexUsageLine.h"

#include "VesloraCore/Agents/Usage/UsageNumbers.h"
#include "VesloraCore/Text/Iso8601.h"
#include "VesloraCore/Text/Json.h"

#include <algorithm>

namespace veslora {

namespace {

using UsageNumbers::integerAt;

constexpr std::int64_t fiveHourMinutes = 300;
constexpr std::int64_t weekMinutes = 10'080;

std::optional<ClaudeLimit> limitFrom(const Json& window) {
    const std::optional<double> percent = UsageNumbers::percentAt(window, "used_percent");
    if (!percent) {
        return std::nullopt;
    }
    return ClaudeLimit{*percent, UsageNumbers::numberAt(window, "resets_at")};
}

// A window's length says which limit it is; the key it is under only replaces a missing length.
void readWindow(const Json& limits, std::string_view key, std::int64_t assumedMinutes, CodexLimits& read) {
    const Json* window = limits.objectAt(key);
    if (!window) {
        return;
    }
    const std::int64_t minutes = integerAt(*window, "window_minutes").value_or(assumedMinutes);
    if (minutes == weekMinutes) {
        read.week = limitFrom(*window);
    } else if (minutes == fiveHourMinutes) {
        read.fiveHour = limitFrom(*window);
    }
}

CodexLimits limitsFrom(const Json& limits, Timestamp date) {
    CodexLimits read;
    readWindow(limits, "primary", fiveHourMinutes, read);
    readWindow(limits, "secondary", weekMinutes, read);
    read.receivedAt = date;
    return read;
}

std::optional<CodexContext> contextFrom(const Json& info, Timestamp date) {
    const std::int64_t window = integerAt(info, "model_context_window").value_or(0);
    const Json* usage = info.objectAt("last_token_usage");
    const std::optional<std::int64_t> input = usage ? integerAt(*usage, "input_tokens") : std::nullopt;
    if (window < 1 || !input) {
        return std::nullopt;
    }
    const auto percent =
        UsageNumbers::percent(static_cast<double>(*input) / static_cast<double>(window) * 100);
    return percent ? std::optional(CodexContext{*percent, window, date}) : std::nullopt;
}

std::vector<CodexUsageLine> tokenCount(const Json& payload, Timestamp date) {
    std::vector<CodexUsageLine> records;
    if (const Json* limits = payload.objectAt("rate_limits")) {
        records.push_back({limitsFrom(*limits, date)});
    }
    const Json* info = payload.objectAt("info");
    if (const auto context = info ? contextFrom(*info, date) : std::nullopt) {
        records.push_back({*context});
    }
    return records;
}

const std::string* keyOf(const Json& payload) {
    const std::string* response = payload.stringAt("response_id");
    return response ? response : payload.stringAt("turn_id");
}

// Of all input, what did not come from the cache. The numbers may be anything.
std::int64_t uncached(std::int64_t input, std::int64_t cached) {
    TokenSum rest;
    rest.add({.input = input});
    rest.subtract({.input = cached});
    return std::max<std::int64_t>(rest.totals().input, 0);
}

std::vector<CodexUsageLine> usageRecord(const Json& payload, Timestamp date) {
    const Json* usage = payload.objectAt("usage");
    const std::string* key = keyOf(payload);
    const auto input = usage ? integerAt(*usage, "input_tokens") : std::nullopt;
    const auto output = usage ? integerAt(*usage, "output_tokens") : std::nullopt;
    if (!input || !output || !key) {
        return {};
    }
    const std::int64_t cached = integerAt(*usage, "cached_input_tokens").value_or(0);
    ClaudeTokenTotals totals;
    totals.input = uncached(*input, cached);
    totals.output = *output;
    totals.cacheWrite = integerAt(*usage, "cache_write_input_tokens").value_or(0);
    totals.cacheRead = cached;
    return {{CodexUsageLine::Tokens{*key, totals, date}}};
}

} // namespace

std::vector<CodexUsageLine> CodexUsageLine::parse(std::string_view line) {
    const std::optional<Json> root = Json::parse(line);
    const Json* payload = root ? root->objectAt("payload") : nullptr;
    const std::string* timestamp = root ? root->stringAt("timestamp") : nullptr;
    const std::optional<Timestamp> date = timestamp ? Iso8601::parse(*timestamp) : std::nullopt;
    if (!payload || !date) {
        return {};
    }
    const std::string type = root->textAt("type");
    if (type == "event_msg" && payload->textAt("type") == "token_count") {
        return tokenCount(*payload, *date);
    }
    return type == "token_usage_record" ? usageRecord(*payload, *date) : std::vector<CodexUsageLine>();
}

} // namespace veslora
