// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/AgentSpool.h"

#include "VesloraUI/Claude/SupportDirectory.h"

#include <algorithm>
#include <string_view>
#include <tuple>

namespace veslora {

namespace {

constexpr std::string_view suffix = ".json";
constexpr std::string_view leftoverPrefix = "tmp.";
constexpr double sweepPeriod = 3600;

} // namespace

struct AgentSpool::Entry {
    std::int64_t nanoseconds;
    std::string name;
    Timestamp time;

    bool operator<(const Entry& other) const {
        return std::tie(nanoseconds, name) < std::tie(other.nanoseconds, other.name);
    }
};

AgentSpool::AgentSpool(Files& files, SupportDirectory& support, std::string_view name)
    : m_files(files), m_support(support), m_name(name), m_path(support.pathOf(name)) {}

void AgentSpool::create() {
    m_support.createFolder(m_name);
}

void AgentSpool::take(Timestamp now, const std::function<void(const SpoolFile&)>& each) {
    const auto names = m_files.list(m_path).value_or(std::vector<std::string>());
    if (names.empty()) {
        return;
    }
    sweepLeftovers(names, now);
    std::vector<Entry> entries;
    for (const std::string& name : names) {
        if (!name.ends_with(suffix)) {
            continue;
        }
        const auto found = m_files.stat(m_path + "/" + name, Links::refuse);
        const auto stuck = m_stuck.find(name);
        if (found && (stuck == m_stuck.end() || stuck->second != found->modifiedNanoseconds)) {
            entries.push_back({found->modifiedNanoseconds, name, found->modified});
        }
    }
    std::ranges::sort(entries, std::less<>());
    for (const Entry& entry : entries) {
        const std::string path = m_path + "/" + entry.name;
        each({entry.name, entry.time, m_files.read(path, {.links = Links::refuse, .cap = payloadCap})});
        if (m_files.remove(path)) {
            m_stuck[entry.name] = entry.nanoseconds;
        }
    }
}

void AgentSpool::sweepLeftovers(const std::vector<std::string>& names, Timestamp now) {
    if (now - m_lastSweep < sweepPeriod) {
        return;
    }
    m_lastSweep = now;
    for (const std::string& name : names) {
        if (!name.starts_with(leftoverPrefix) || name.ends_with(suffix)) {
            continue;
        }
        const auto found = m_files.stat(m_path + "/" + name, Links::refuse);
        if (found && found->modified < now - eventLifetime) {
            m_files.remove(m_path + "/" + name);
        }
    }
}

} // namespace veslora
