// SPDX-License-Identifier: MIT
// Whatever is counted, merged, copied and begun again: a tally comes to what a plain map of all messages
// does.
#include "VesloraCore/Agents/Usage/ClaudeUsageTally.h"
#include "tests/support/FixedCalendar.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <map>
#include <random>
#include <string>
#include <utility>

namespace veslora {
namespace {

constexpr Timestamp noon = 1'795'262'400; // 2026-11-21T12:00:00Z
constexpr Timestamp dayLength = 86'400;

/// The rules by the letter.
struct PlainTally {
    Timestamp noonOfDay = noon;
    std::map<std::string, ClaudeTokenTotals> messages;

    [[nodiscard]] ClaudeTokenTotals totals() const {
        TokenSum sum;
        for (const auto& [key, totals] : messages) {
            sum.add(totals);
        }
        return sum.totals();
    }
};

struct Pair {
    ClaudeUsageTally tally;
    PlainTally plain;
};

class Actions {
  public:
    explicit Actions(unsigned seed)
        : m_random(seed),
          m_names(1 + pick(400)), m_first{{noon, test::fixedCalendar(), {m_random(), m_random()}}, {}},
          m_later(m_first) {}

    void act() {
        switch (pick(40)) {
        case 0:
            return merge();
        case 1:
            return roll();
        case 2:
            m_later = m_first;
            return;
        case 3:
            m_later = {m_first.tally.emptied(), {m_first.plain.noonOfDay, {}}};
            return;
        default:
            return add(pick(2) == 0 ? m_first : m_later);
        }
    }

    void expectEqual() const {
        ASSERT_EQ(m_first.tally.totals(), m_first.plain.totals());
        ASSERT_EQ(m_later.tally.totals(), m_later.plain.totals());
    }

    [[nodiscard]] std::size_t most() const { return m_most; }

  private:
    unsigned pick(unsigned count) { return static_cast<unsigned>(m_random() % count); }

    /// Usual ones, those around what 32 bits hold, and those around what 64 do.
    std::int64_t count() {
        using Limits = std::numeric_limits<std::int64_t>;
        const std::int64_t near = pick(4);
        switch (pick(12)) {
        case 0:
            return (std::int64_t{1} << 32) - 3 + near;
        case 1:
            return Limits::max() - near;
        case 2:
            return Limits::min() + near;
        case 3:
            return -near;
        default:
            return pick(150'000);
        }
    }
    ClaudeTokenTotals totals() {
        if (pick(3) == 0) {
            return {count(), count(), count(), count()};
        }
        return {pick(2'000), pick(900), pick(4'000), pick(150'000)};
    }
    void add(Pair& to) {
        const std::string key = "m" + std::to_string(pick(m_names)) + "|r" + std::to_string(pick(3));
        const ClaudeTokenTotals counted = totals();
        const double days = pick(8) == 0 ? 1 : 0;
        to.tally.add(ClaudeUsageLine{key, counted, to.plain.noonOfDay - days * dayLength});
        if (days == 0) {
            to.plain.messages[key] = counted;
        }
        m_most = std::max(m_most, to.plain.messages.size());
    }
    /// The later one is gone afterwards, if it was taken.
    void merge() {
        const bool isSameDay = m_first.plain.noonOfDay == m_later.plain.noonOfDay;
        ASSERT_EQ(m_first.tally.merge(std::move(m_later.tally)), isSameDay);
        if (isSameDay) {
            for (const auto& [key, counted] : m_later.plain.messages) {
                m_first.plain.messages[key] = counted;
            }
        }
        m_later = {m_first.tally.emptied(), {m_first.plain.noonOfDay, {}}};
    }
    void roll() {
        Pair& rolled = pick(2) == 0 ? m_first : m_later;
        const double days = pick(3);
        rolled.plain.noonOfDay += days * dayLength;
        rolled.tally.roll(rolled.plain.noonOfDay + pick(40'000));
        if (days > 0) {
            rolled.plain.messages.clear();
        }
    }

    std::mt19937_64 m_random;
    unsigned m_names;
    Pair m_first;
    Pair m_later;
    std::size_t m_most = 0;
};

TEST(ClaudeUsageTallyProperty, ComesToWhatAPlainMapDoes) {
    std::size_t most = 0;
    for (unsigned seed = 0; seed < 100; ++seed) {
        Actions actions(seed);
        for (int step = 0; step < 400; ++step) {
            actions.act();
            ASSERT_NO_FATAL_FAILURE(actions.expectEqual()) << "seed " << seed << ", step " << step;
        }
        most = std::max(most, actions.most());
    }
    EXPECT_GT(most, 150U);
}

} // namespace
} // namespace veslora
