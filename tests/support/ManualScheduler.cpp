// SPDX-License-Identifier: MIT
#include "tests/support/ManualScheduler.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace veslora {
namespace {

/// More callbacks than any test needs in one `advance`: beyond it something starts itself again without end.
constexpr int mostCallbacks = 1'000'000;

/// The two clocks are kept apart in doubles, so the same moment may differ by this much between them.
constexpr double roundingError = 1e-5;

/// How far beyond its end `advance` still runs what was added up in another order.
constexpr double lateness = 1e-7;

} // namespace

Task ManualScheduler::after(double seconds, std::function<void()> run) {
    return add(Kind::once, std::max(seconds, 0.0), std::move(run));
}

Task ManualScheduler::at(Timestamp date, std::function<void()> run) {
    return add(Kind::date, std::max(0.0, date - m_wallClock), std::move(run));
}

Task ManualScheduler::every(double seconds, Precision precision, std::function<void()> run) {
    if (!(seconds > 0)) {
        throw std::invalid_argument("a repetition needs a period");
    }
    return add(precision == Precision::exact ? Kind::exact : Kind::coarse, seconds, std::move(run));
}

Task ManualScheduler::background(std::function<void()> work, std::function<void()> then) {
    auto state = std::make_shared<TaskState>();
    state->run = std::move(then);
    m_background.push_back({std::move(work), state});
    return Task(std::move(state));
}

Task ManualScheduler::add(Kind kind, double seconds, std::function<void()> run) {
    auto state = std::make_shared<TaskState>();
    // Shared, since a repetition is copied at each call and must keep what its callback remembers.
    state->run = [shared = std::make_shared<std::function<void()>>(std::move(run))] { (*shared)(); };
    Entry entry{++m_lastId, state, kind, seconds, m_passed + seconds, m_wallClock + seconds};
    if (kind == Kind::exact) {
        align(entry, m_wallClock);
    }
    m_entries.push_back(std::move(entry));
    return Task(std::move(state));
}

/// Moves an exact repetition to the first multiple of its period later than `after`.
void ManualScheduler::align(Entry& entry, Timestamp after) const {
    entry.wallTime = (std::floor(after / entry.period) + 1) * entry.period;
    entry.moment = m_passed + (entry.wallTime - m_wallClock);
}

/// Moves a repetition that is due to its next moment, passing over those that it missed.
void ManualScheduler::moveOn(Entry& entry) const {
    if (entry.kind == Kind::exact) {
        align(entry, m_wallClock + std::min(roundingError, entry.period / 4));
        return;
    }
    const double missed = std::max(std::floor((m_passed - entry.moment) / entry.period), 0.0);
    entry.moment += (missed + 1) * entry.period;
    entry.wallTime = m_wallClock + (entry.moment - m_passed);
}

void ManualScheduler::advance(double seconds) {
    const double end = m_passed + seconds;
    int callbacks = 0;
    for (Entry* next = earliest(); next != nullptr && next->moment <= end + lateness; next = earliest()) {
        moveClocks(std::max(next->moment, m_passed), next->wallTime);
        fire(*next);
        if (++callbacks > mostCallbacks) {
            throw std::runtime_error("the program never comes to rest");
        }
    }
    moveClocks(std::max(end, m_passed), m_wallClock);
}

void ManualScheduler::suspend(double seconds) {
    moveClocks(m_passed + seconds, m_wallClock);
}

void ManualScheduler::setClock(Timestamp time) {
    m_wallClock = time;
    m_wallStart = time - m_passed;
    for (Entry& entry : m_entries) {
        const bool hasPassed = entry.wallTime <= time;
        if (entry.kind == Kind::exact && !hasPassed) {
            align(entry, time);
        } else if (entry.kind == Kind::date) {
            entry.moment = m_passed + std::max(entry.wallTime - time, 0.0);
        } else if (hasPassed && entry.kind == Kind::coarse) {
            entry.moment = std::min(entry.moment, m_passed);
        }
    }
}

std::size_t ManualScheduler::runBackground() {
    const std::size_t count = m_background.size();
    for (std::size_t index = 0; index < count; ++index) {
        const Work work = std::move(m_background.front());
        m_background.pop_front();
        work.work();
        if (const auto then = std::exchange(work.state->run, nullptr)) {
            then();
        }
    }
    return count;
}

std::size_t ManualScheduler::pending() const {
    return static_cast<std::size_t>(std::ranges::count_if(
        m_entries, [](const Entry& entry) { return static_cast<bool>(entry.state->run); }));
}

std::optional<double> ManualScheduler::nextDelay() const {
    std::optional<double> delay;
    for (const Entry& entry : m_entries) {
        if (entry.state->run) {
            const double left = std::max(entry.moment - m_passed, 0.0);
            delay = std::min(delay.value_or(left), left);
        }
    }
    return delay;
}

/// Null when nothing is alive. Forgets what was cancelled.
ManualScheduler::Entry* ManualScheduler::earliest() {
    std::erase_if(m_entries, [](const Entry& entry) { return !entry.state->run; });
    const auto found = std::ranges::min_element(m_entries, [](const Entry& left, const Entry& right) {
        return left.moment != right.moment ? left.moment < right.moment : left.id < right.id;
    });
    return found == m_entries.end() ? nullptr : &*found;
}

void ManualScheduler::moveClocks(double passed, Timestamp meant) {
    m_passed = passed;
    m_wallClock = m_wallStart + passed;
    // A comparison with the clock must find the moment passed, although it was added up in another order.
    if (m_wallClock < meant && meant - m_wallClock < roundingError) {
        m_wallClock = meant;
    }
}

void ManualScheduler::fire(Entry& entry) {
    const auto state = entry.state;
    if (entry.kind == Kind::once || entry.kind == Kind::date) {
        // Emptied first, so that its owner finds it ended; the entry goes with the next look.
        const auto run = std::exchange(state->run, nullptr);
        run();
        return;
    }
    moveOn(entry);
    // A copy, since cancelling from within empties the original.
    const auto run = state->run;
    run();
}

} // namespace veslora
