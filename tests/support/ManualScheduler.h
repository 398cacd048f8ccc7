// SPDX-License-Identifier: MIT
// Time that a test moves by hand. Nothing happens on its own: whatever is due runs within `advance`, and
// background work within `runBackground`, on the test's own thread.
#pragma once

#include "VesloraUI/Platform/Scheduler.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <vector>

namespace veslora {

class ManualScheduler final : public Scheduler {
  public:
    /// A date in 2027 on which every period in use here has a multiple.
    static constexpr Timestamp defaultStart = 1'800'000'000;
    /// Another number than the wall clock's and than none, so that nobody can take one for the other.
    static constexpr double steadyStart = 5000;

    explicit ManualScheduler(Timestamp start = defaultStart) : m_wallStart(start), m_wallClock(start) {}

    [[nodiscard]] Timestamp now() const override { return m_wallClock; }
    [[nodiscard]] double steadyNow() const override { return steadyStart + m_passed; }
    [[nodiscard]] Task after(double seconds, std::function<void()> run) override;
    [[nodiscard]] Task at(Timestamp date, std::function<void()> run) override;
    [[nodiscard]] Task every(double seconds, Precision precision, std::function<void()> run) override;
    [[nodiscard]] Task background(std::function<void()> work, std::function<void()> then) override;
    [[nodiscard]] Task concurrently(std::function<void()> work, std::function<void()> then) override {
        return background(std::move(work), std::move(then));
    }

    /// Lets `seconds` pass and runs everything that falls due meanwhile in the order of its moments, first
    /// come first served at one moment, with the clock at that moment. What a callback starts runs too if it
    /// falls due in that time. With 0, whatever is due already runs.
    void advance(double seconds);

    /// Lets `seconds` pass while the machine sleeps: nothing runs before the next `advance`, and then a
    /// repetition that missed several of its moments runs once.
    void suspend(double seconds);

    /// Sets the wall clock and lets no time pass. Dates and coarse repetitions whose moment on the wall clock
    /// lies behind now fall due at the next `advance`; exact repetitions move to the new clock's multiples;
    /// waits keep their length.
    void setClock(Timestamp time);

    /// Does all background work that was queued before this call and calls what was to follow it. How many
    /// there were.
    std::size_t runBackground();

    /// How many waits and repetitions are alive.
    [[nodiscard]] std::size_t pending() const;
    /// Seconds until the next of them falls due; absent when none is alive.
    [[nodiscard]] std::optional<double> nextDelay() const;
    /// How many pieces of background work were not done yet, cancelled ones included.
    [[nodiscard]] std::size_t pendingBackground() const { return m_background.size(); }

  private:
    enum class Kind { once, date, exact, coarse };

    struct Entry {
        std::uint64_t id = 0;
        std::shared_ptr<TaskState> state;
        Kind kind = Kind::once;
        double period = 0;
        double moment = 0;      ///< seconds that have passed by then
        Timestamp wallTime = 0; ///< the same moment on the wall clock
    };
    struct Work {
        std::function<void()> work;
        std::shared_ptr<TaskState> state;
    };

    Task add(Kind kind, double seconds, std::function<void()> run);
    void align(Entry& entry, Timestamp after) const;
    void moveOn(Entry& entry) const;
    [[nodiscard]] Entry* earliest();
    void moveClocks(double passed, Timestamp meant);
    void fire(Entry& entry);

    Timestamp
        m_wallStart; ///< what the wall clock showed, by its present setting, when nothing had passed yet
    Timestamp m_wallClock;
    double m_passed = 0;
    std::uint64_t m_lastId = 0;
    std::vector<Entry> m_entries;
    std::deque<Work> m_background;
};

} // namespace veslora
