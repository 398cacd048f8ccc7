// SPDX-License-Identifier: MIT
#include "VesloraCore/Island/StatusLine.h"

#include "VesloraCore/Overloaded.h"
#include "VesloraCore/Text/Json.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace veslora::StatusLine {

namespace {

constexpr std::string_view island = "island";
constexpr std::string_view shows = "shows";
constexpr std::string_view sessionCounts = "sessions";
constexpr std::string_view pauseEnd = "pausedUntil";

std::string_view nameOf(const ClaudeSessionStatus& status) {
    return std::visit(
        Overloaded{
            [](const ClaudeStatus::Idle&) { return std::string_view("idle"); },
            [](const ClaudeStatus::NeedsApproval&) { return std::string_view("needsApproval"); },
            [](const ClaudeStatus::Finished&) { return std::string_view("finished"); },
            [](const ClaudeStatus::Working&) { return std::string_view("working"); },
        },
        status);
}

Json counted(const std::vector<ClaudeSessionSummary>& sessions) {
    const std::array<ClaudeSessionStatus, 4> all{ClaudeStatus::Idle{}, ClaudeStatus::NeedsApproval{},
                                                 ClaudeStatus::Finished{}, ClaudeStatus::Working{}};
    Json counts = Json::makeObject();
    for (const ClaudeSessionStatus& status : all) {
        counts.set(nameOf(status),
                   Json::makeInteger(std::ranges::count(sessions, status.index(), [](const auto& session) {
                       return session.status.index();
                   })));
    }
    return counts;
}

} // namespace

std::string make(bool isOpen, LiveActivityKind closedActivity,
                 const std::vector<ClaudeSessionSummary>& sessions, std::optional<Timestamp> pausedUntil) {
    Json line = Json::makeObject();
    line.set(island, Json::makeString(isOpen ? "open" : "closed"));
    line.set(shows, Json::makeString(isOpen ? "rack" : std::string(name(closedActivity))));
    line.set(sessionCounts, counted(sessions));
    if (pausedUntil) {
        line.set(pauseEnd, Json::makeInteger(std::llround(*pausedUntil)));
    }
    return line.print(Json::Layout::compact);
}

bool isOne(std::string_view text) {
    constexpr std::size_t longest = 1000;
    const bool isPrintable =
        std::ranges::all_of(text, [](char letter) { return letter >= ' ' && letter <= '~'; });
    if (text.size() > longest || !isPrintable) {
        return false;
    }
    const auto line = Json::parse(text);
    return line && line->stringAt(island) && line->stringAt(shows) && line->objectAt(sessionCounts);
}

} // namespace veslora::StatusLine
