// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/ClaudeStatusDirectory.h"

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
    for (const std::string& name : m_files.list(m_path).value_or(std::vector<std::string>())) {
        const auto stat =
            name.ends_with(".json") ? m_files.stat(m_path + "/" + name, Links::refuse) : std::nullopt;
        if (!stat || !stat->isOurFile()) {
            continue;
        }
        Known known = look(name, *stat, now);
        if (known.snapshot && liveSessionIds && !liveSessionIds->contains(known.snapshot->sessionId) &&
            now - stat->modified > lifetime) {
            m_files.remove(m_path + "/" + name);
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

ClaudeStatusDirectory::Known ClaudeStatusDirectory::look(const std::string& name, const FileStat& stat,
                                                         Timestamp now) {
    const auto found = m_known.find(name);
    if (found != m_known.end() && found->second.stat.isSame(stat)) {
        return std::move(found->second);
    }
    Known known;
    if (const ReadResult read = m_files.read(m_path + "/" + name, {.links = Links::refuse, .cap = cap})) {
        known.stat.remember(stat, now);
        known.snapshot = ClaudeStatusSnapshot::parse(read.bytes, stat.modified);
    }
    return known;
}

} // namespace veslora
