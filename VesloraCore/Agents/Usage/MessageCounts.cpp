// SPDX-License-Identifier: MIT
#include "VesloraCore/Agents/Usage/MessageCounts.h"

#include <algorithm>

namespace veslora {

namespace {

constexpr std::size_t smallestIndex = 64;

} // namespace

void MessageCounts::count(std::string_view message, const ClaudeTokenTotals& totals) {
    count(SipHash::digest(m_secret, message), totals);
}

void MessageCounts::count(const SipHash::Digest& message, const ClaudeTokenTotals& totals) {
    Entry& entry = entryOf(message);
    m_sum.subtract(totalsOf(entry));
    m_sum.add(totals);
    store(entry, totals);
}

bool MessageCounts::merge(MessageCounts&& later) {
    if (later.m_secret != m_secret) {
        return false;
    }
    for (std::vector<Entry>& page : later.m_pages) {
        for (const Entry& entry : page) {
            count(entry.message, later.totalsOf(entry));
        }
        // Each goes at once, so that no second copy of the day lies in memory meanwhile.
        page = std::vector<Entry>();
    }
    later = later.emptied();
    return true;
}

std::size_t MessageCounts::size() const {
    return m_pages.empty() ? 0 : (m_pages.size() - 1) * pageSize + m_pages.back().size();
}

/// The message's; one that counts nothing if it is new.
MessageCounts::Entry& MessageCounts::entryOf(const SipHash::Digest& message) {
    if (4 * (size() + 1) > 3 * m_index.size()) {
        growIndex();
    }
    std::uint32_t& place = m_index[slotOf(message)];
    if (place == 0) {
        append(message);
        // 32 bits are enough: more messages than that would take 128 GB.
        place = static_cast<std::uint32_t>(size());
    }
    return entryAt(place);
}

void MessageCounts::append(const SipHash::Digest& message) {
    if (size() % pageSize == 0) {
        m_pages.emplace_back().reserve(pageSize);
    }
    m_pages.back().push_back({message});
}

MessageCounts::Entry& MessageCounts::entryAt(std::uint32_t place) {
    return m_pages[(place - 1) / pageSize][(place - 1) % pageSize];
}

/// Where the message is in the index, or the free slot in which it belongs.
std::size_t MessageCounts::slotOf(const SipHash::Digest& message) {
    std::size_t slot = firstSlotOf(message);
    while (m_index[slot] != 0 && entryAt(m_index[slot]).message != message) {
        slot = slotAfter(slot);
    }
    return slot;
}

void MessageCounts::growIndex() {
    m_index = std::vector<std::uint32_t>(std::max(smallestIndex, 2 * m_index.size()));
    for (std::uint32_t place = 1; place <= size(); ++place) {
        // All messages differ, and so none is compared.
        std::size_t slot = firstSlotOf(entryAt(place).message);
        while (m_index[slot] != 0) {
            slot = slotAfter(slot);
        }
        m_index[slot] = place;
    }
}

ClaudeTokenTotals MessageCounts::totalsOf(const Entry& entry) const {
    const auto& counts = entry.counts;
    return counts[0] == isLarge ? m_large[counts[1]]
                                : ClaudeTokenTotals{counts[0], counts[1], counts[2], counts[3]};
}

void MessageCounts::store(Entry& entry, const ClaudeTokenTotals& totals) {
    const std::array<std::int64_t, 4> counts{totals.input, totals.output, totals.cacheWrite,
                                             totals.cacheRead};
    const auto fits = [](std::int64_t count) { return count >= 0 && count < isLarge; };
    if (entry.counts[0] == isLarge) {
        // It keeps its place there, so that a message never has two of them.
        m_large[entry.counts[1]] = totals;
    } else if (std::ranges::all_of(counts, fits)) {
        std::ranges::transform(counts, entry.counts.begin(),
                               [](std::int64_t count) { return static_cast<std::uint32_t>(count); });
    } else {
        entry.counts = {isLarge, static_cast<std::uint32_t>(m_large.size())};
        m_large.push_back(totals);
    }
}

} // namespace veslora
