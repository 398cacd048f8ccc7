// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Monitors/ClaudeStatusDirectory.h"

#include "VesloraCore/Agents/Hooks/SupportNames.h"
#include "VesloraCore/Text/TerminalText.h"
#include "VesloraUI/Claude/Spool/SupportDirectory.h"
#include "VesloraUI/Platform/Logs.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace veslora {

namespace {

/// A status line's input is some kilobytes.
constexpr std::size_t cap = std::size_t{1} << 20;

} // namespace

std::vector<ClaudeStatusSnapshot>
ClaudeStatusDirectory::read(Timestamp now, const std::optional<std::set<std::string>>& liveSessionIds) {
    std::map<std::string, Known> current;
    std::vector<ClaudeStatusSnapshot> snapshots;
    const OpenedFolder folder = m_support.openFolder(SupportNames::statusLineSnapshots);
    const auto names = folder ? folder->list() : std::nullopt;
    for (const std::string& name : names.value_or(std::vector<std::string>())) {
        const auto stat = name.ends_with(".json") ? folder->stat(name) : std::nullopt;
        if (!stat || !stat->isOurFile()) {
            continue;
        }
        Known known = look(*folder.folder, name, *stat, now);
        if (known.snapshot && liveSessionIds && !liveSessionIds->contains(known.snapshot->sessionId) &&
            now - stat->modified > lifetime) {
            folder->remove(name);
            continue;
        }
        if (known.snapshot) {
            snapshots.push_back(*known.snapshot);
        }
        current.emplace(name, std::move(known));
    }
    m_known = std::move(current);
    std::ranges::stable_sort(snapshots, std::greater(), &ClaudeStatusSnapshot::receivedAt);
    return snapshots;
}

ClaudeStatusDirectory::Known ClaudeStatusDirectory::look(Folder& folder, const std::string& name,
                                                         const FileStat& stat, Timestamp now) {
    const auto found = m_known.find(name);
    if (found != m_known.end() && found->second.stat.isSame(stat)) {
        return std::move(found->second);
    }
    Known known;
    const ReadResult read = folder.read(name, {.cap = cap});
    if (m_troubles.begins(name, read.error)) {
        qCWarning(Logs::agents, "can't read the status %s: %s", TerminalText::withoutControls(name).c_str(),
                  read.error.message().c_str());
    }
    if (read) {
        known.stat.remember(stat, now);
        known.snapshot = ClaudeStatusSnapshot::parse(read.bytes, stat.modified);
    }
    return known;
}

} // namespace veslora
