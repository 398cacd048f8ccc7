// SPDX-License-Identifier: MIT
#include "VesloraCore/Agents/Usage/CodexUsageReadings.h"

#include <algorithm>
#include <utility>
#include <variant>

namespace veslora {

namespace {

template <class Reading>
bool isNewer(const Reading& reading, const std::optional<Reading>& held) {
    return !held || reading.receivedAt >= held->receivedAt;
}

} // namespace

CodexUsageReadings::CodexUsageReadings(Timestamp time, std::shared_ptr<const Calendar> calendar)
    : m_tally(time, std::move(calendar)) {}

void CodexUsageReadings::add(std::string_view text) {
    for (const CodexUsageLine& line : CodexUsageLine::parse(text)) {
        if (const auto* limits = std::get_if<CodexLimits>(&line.kind)) {
            take(*limits);
            wasActiveAt(limits->receivedAt);
        } else if (const auto* context = std::get_if<CodexContext>(&line.kind)) {
            take(*context);
        } else {
            m_tally.add(line);
            wasActiveAt(std::get<CodexUsageLine::Tokens>(line.kind).at);
        }
    }
}

void CodexUsageReadings::take(const CodexLimits& limits) {
    if (isNewer(limits, m_limits)) {
        m_limits = limits;
    }
}

void CodexUsageReadings::take(const CodexContext& context) {
    if (isNewer(context, m_context)) {
        m_context = context;
    }
}

void CodexUsageReadings::wasActiveAt(Timestamp time) {
    m_lastActivity = std::max(m_lastActivity.value_or(distantPast), time);
}

bool CodexUsageReadings::merge(CodexUsageReadings&& later) {
    if (!m_tally.merge(std::move(later.m_tally))) {
        return false;
    }
    if (later.m_limits) {
        take(*later.m_limits);
    }
    if (later.m_context) {
        take(*later.m_context);
    }
    if (later.m_lastActivity) {
        wasActiveAt(*later.m_lastActivity);
    }
    return true;
}

void CodexUsageReadings::roll(Timestamp time) {
    m_tally.roll(time);
}

CodexUsageReadings CodexUsageReadings::emptied() const {
    return CodexUsageReadings(m_tally.emptied());
}

} // namespace veslora
