// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/Deadlines.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace veslora {
namespace {

// A timer fires this much after its moment, so that a caller who compares with the wall clock, which may
// differ by a few microseconds, finds the moment passed.
constexpr double margin = 50e-6;
// A repetition that fires by this much too early, because the clocks drifted apart, stands for its own moment
// still.
constexpr double earliness = 2e-3;
constexpr double shortestPeriod = 1e-3;

double bounded(double seconds) {
    constexpr double longest = 4e9;
    return std::isnan(seconds) ? 0 : std::clamp(seconds, 0.0, longest);
}

double bootTime() {
    return readClock(CLOCK_BOOTTIME);
}

} // namespace

class Deadlines::Presence {
  public:
    Presence(std::weak_ptr<Deadlines> deadlines, std::uint64_t id)
        : m_deadlines(std::move(deadlines)), m_id(id) {}
    Presence(const Presence&) = delete;
    Presence& operator=(const Presence&) = delete;
    ~Presence() {
        if (const auto deadlines = m_deadlines.lock()) {
            deadlines->forget(m_id);
        }
    }

  private:
    std::weak_ptr<Deadlines> m_deadlines;
    std::uint64_t m_id;
};

Deadlines::Deadlines(std::function<Timestamp()> wallClock)
    : m_wallClock(std::move(wallClock)), m_exactTimer(CLOCK_BOOTTIME, [this] { fireExact(); }),
      m_coarseTimer(CLOCK_BOOTTIME, [this] { fireCoarse(); }), m_clockWatch(CLOCK_REALTIME, [this] {
          m_clockWatch.armForClockChange();
          wallClockWasSet();
      }) {
    m_clockWatch.armForClockChange();
}

Deadlines::~Deadlines() {
    for (const auto& [id, entry] : std::exchange(m_entries, {})) {
        const auto dropped = std::exchange(entry.state->run, nullptr);
    }
}

Task Deadlines::addOnce(double seconds, std::function<void()> run) {
    const double wait = bounded(seconds);
    return add({.state = {}, .kind = Kind::once, .period = 0, .moment = bootTime() + wait, .wallTime = 0},
               std::move(run));
}

Task Deadlines::addDate(Timestamp date, std::function<void()> run) {
    const double wait = bounded(date - now());
    return add(
        {.state = {}, .kind = Kind::date, .period = 0, .moment = bootTime() + wait, .wallTime = now() + wait},
        std::move(run));
}

Task Deadlines::addRepeating(double seconds, Precision precision, std::function<void()> run) {
    Entry entry;
    entry.kind = precision == Precision::exact ? Kind::exact : Kind::coarse;
    entry.period = std::max(bounded(seconds), shortestPeriod);
    if (entry.kind == Kind::exact) {
        align(entry, now());
    } else {
        entry.moment = bootTime() + entry.period;
        entry.wallTime = now() + entry.period;
    }
    return add(std::move(entry), std::move(run));
}

Task Deadlines::add(Entry entry, std::function<void()> run) {
    const std::uint64_t id = ++m_lastId;
    auto state = std::make_shared<TaskState>();
    state->run = [presence = std::make_shared<Presence>(weak_from_this(), id), run = std::move(run)] {
        run();
    };
    entry.state = state;
    m_entries.emplace(id, std::move(entry));
    armTimers();
    return Task(std::move(state));
}

void Deadlines::forget(std::uint64_t id) {
    if (m_entries.erase(id) > 0) {
        armTimers();
    }
}

/// Moves an exact repetition to the first multiple of its period later than `after`.
void Deadlines::align(Entry& entry, Timestamp after) const {
    entry.wallTime = (std::floor(after / entry.period) + 1) * entry.period;
    entry.moment = bootTime() + (entry.wallTime - now());
}

/// Moves a repetition that is due to its next moment, passing over those that were missed.
void Deadlines::advance(Entry& entry) const {
    if (entry.kind == Kind::exact) {
        align(entry, now() + std::min(earliness, entry.period / 4));
        return;
    }
    const double bootNow = bootTime();
    const double missed = std::max(std::floor((bootNow - entry.moment) / entry.period), 0.0);
    entry.moment += (missed + 1) * entry.period;
    // Its tick may lie a little before its moment, and so be this very one, when the program was late.
    while (coarseTick(entry.moment) <= bootNow + margin) {
        entry.moment += entry.period;
    }
    entry.wallTime = now() + (entry.moment - bootNow);
}

void Deadlines::wallClockWasSet() {
    const Timestamp wallNow = now();
    const double bootNow = bootTime();
    for (auto& [id, entry] : m_entries) {
        const bool hasPassed = entry.wallTime <= wallNow;
        if (entry.kind == Kind::exact && !hasPassed) {
            align(entry, wallNow);
        } else if (entry.kind == Kind::date) {
            entry.moment = bootNow + std::max(entry.wallTime - wallNow, 0.0);
        } else if (hasPassed && entry.kind == Kind::coarse) {
            entry.moment = std::min(entry.moment, bootNow);
        }
    }
    armTimers();
}

void Deadlines::fireExact() {
    const double bootNow = bootTime();
    std::vector<std::pair<double, std::uint64_t>> due;
    for (const auto& [id, entry] : m_entries) {
        const double slack = entry.kind == Kind::exact ? std::min(earliness, entry.period / 4) : 0;
        if (entry.kind != Kind::coarse && entry.moment <= bootNow + slack) {
            due.emplace_back(entry.moment, id);
        }
    }
    std::ranges::sort(due);
    std::vector<std::uint64_t> ids;
    for (const auto& [moment, id] : due) {
        ids.push_back(id);
    }
    fire(ids);
}

void Deadlines::fireCoarse() {
    const double bootNow = bootTime();
    std::vector<std::uint64_t> due;
    for (const auto& [id, entry] : m_entries) {
        if (entry.kind == Kind::coarse && coarseTick(entry.moment) <= bootNow + margin) {
            due.push_back(id);
        }
    }
    fire(due);
}

/// A callback may cancel any other entry, add some, or end the scheduler itself.
void Deadlines::fire(const std::vector<std::uint64_t>& due) {
    const auto alive = shared_from_this();
    for (const std::uint64_t id : due) {
        const auto found = m_entries.find(id);
        if (found == m_entries.end()) {
            continue;
        }
        const auto state = found->second.state;
        if (found->second.kind == Kind::once || found->second.kind == Kind::date) {
            m_entries.erase(found);
            const auto run = std::exchange(state->run, nullptr);
            run();
        } else {
            advance(found->second);
            // A copy, since cancelling from within empties the original.
            if (const auto run = state->run) {
                run();
            }
        }
    }
    armTimers();
}

void Deadlines::armTimers() {
    m_exactTimer.arm(earliestExact());
    m_coarseTimer.arm(nextCoarseTick());
}

std::optional<double> Deadlines::earliestExact() const {
    std::optional<double> earliest;
    for (const auto& [id, entry] : m_entries) {
        if (entry.kind != Kind::coarse) {
            earliest = std::min(earliest.value_or(entry.moment + margin), entry.moment + margin);
        }
    }
    return earliest;
}

/// Coarse ticks fall on multiples of the shortest coarse period; this is the one nearest to `moment`.
double Deadlines::coarseTick(double moment) const {
    double step = std::numeric_limits<double>::infinity();
    for (const auto& [id, entry] : m_entries) {
        if (entry.kind == Kind::coarse) {
            step = std::min(step, entry.period);
        }
    }
    return std::floor(moment / step + 0.5) * step;
}

std::optional<double> Deadlines::nextCoarseTick() const {
    std::optional<double> earliest;
    for (const auto& [id, entry] : m_entries) {
        if (entry.kind == Kind::coarse) {
            earliest = std::min(earliest.value_or(entry.moment), entry.moment);
        }
    }
    return earliest ? std::optional(coarseTick(*earliest)) : std::nullopt;
}

} // namespace veslora
