// SPDX-License-Identifier: MIT
// What each of a great many messages used, and their sum. A plain value, used by one thread at a time.
#pragma once

#include "VesloraCore/Agents/Usage/ClaudeTokenTotals.h"
#include "VesloraCore/Text/SipHash.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <string_view>
#include <vector>

namespace veslora {

/// Of a message's name only the digest is kept: two messages whose digests are equal would be taken for one,
/// which does not happen by chance in 128 bits. The names are other programs' text, and so the digests need a
/// secret: with names chosen to collide, each look-up would pass all of them. A message takes 33 bytes, 33
/// more if it counts billions, and up to 11 in the index: less than any line that tells of one.
class MessageCounts {
  public:
    explicit MessageCounts(const SipHash::Key& secret = {}) : m_secret(secret) {}

    /// Counts a message, in place of what it counted before.
    void count(std::string_view message, const ClaudeTokenTotals& totals);

    /// Counts all that `later` does and leaves that one empty. False, and nothing is counted, if its secret
    /// is another one.
    [[nodiscard]] bool merge(MessageCounts&& later);

    /// One with the same secret in which nothing was counted.
    [[nodiscard]] MessageCounts emptied() const { return MessageCounts(m_secret); }

    /// All messages together.
    [[nodiscard]] ClaudeTokenTotals totals() const { return m_sum.totals(); }
    /// How many messages were counted.
    [[nodiscard]] std::size_t size() const;

  private:
    struct Entry {
        SipHash::Digest message;
        /// Input, output, cache write and cache read. Counts that don't fit are in `m_large`: then the
        /// first is `isLarge` and the second their place there.
        std::array<std::uint32_t, 4> counts{};
    };
    static constexpr std::uint32_t isLarge = 0xffff'ffff;
    /// In entries. So many make a mebibyte, which is large enough to be taken from the system and given back
    /// on its own.
    static constexpr std::size_t pageSize = std::size_t{1} << 15;

    void count(const SipHash::Digest& message, const ClaudeTokenTotals& totals);
    [[nodiscard]] Entry& entryOf(const SipHash::Digest& message);
    void append(const SipHash::Digest& message);
    [[nodiscard]] Entry& entryAt(std::uint32_t place);
    [[nodiscard]] std::size_t slotOf(const SipHash::Digest& message);
    [[nodiscard]] std::size_t firstSlotOf(const SipHash::Digest& message) const {
        return message.first & (m_index.size() - 1);
    }
    [[nodiscard]] std::size_t slotAfter(std::size_t slot) const { return (slot + 1) & (m_index.size() - 1); }
    void growIndex();
    [[nodiscard]] ClaudeTokenTotals totalsOf(const Entry& entry) const;
    void store(Entry& entry, const ClaudeTokenTotals& totals);

    SipHash::Key m_secret;
    /// OPTIMIZATION: all but the last are full, so that nothing is copied while they grow, and what was not
    /// used yet of the last one takes no memory. Small blocks left 2.3 MB of holes after a day of 150,000
    /// messages, which is 6 MB in all.
    std::vector<std::vector<Entry>> m_pages;
    /// A hash table with open addressing: the entries' places, counted from 1 through all pages; 0 for a free
    /// slot. Its size is a power of two, and at most three quarters of it are taken.
    std::vector<std::uint32_t> m_index;
    std::deque<ClaudeTokenTotals> m_large;
    TokenSum m_sum;
};

} // namespace veslora
