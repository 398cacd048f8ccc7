// SPDX-License-Identifier: MIT
// Everything that LinuxScheduler waits for, and the timers it waits with. Main thread only.
#pragma once

#include "VesloraLinux/System/TimerDescriptor.h"
#include "VesloraUI/Platform/Scheduler.h"

#include <cstdint>
#include <map>
#include <memory>
#include <vector>

namespace veslora {

/// Each entry knows its moment on the clock that counts suspended time, by which the timers run, and the
/// moment of the wall clock that goes with it.
class Deadlines : public std::enable_shared_from_this<Deadlines> {
  public:
    explicit Deadlines(std::function<Timestamp()> wallClock);
    ~Deadlines();
    Deadlines(const Deadlines&) = delete;
    Deadlines& operator=(const Deadlines&) = delete;

    [[nodiscard]] Timestamp now() const { return m_wallClock(); }
    [[nodiscard]] Task addOnce(double seconds, std::function<void()> run);
    [[nodiscard]] Task addDate(Timestamp date, std::function<void()> run);
    [[nodiscard]] Task addRepeating(double seconds, Precision precision, std::function<void()> run);
    void wallClockWasSet();

    [[nodiscard]] const TimerDescriptor& exactTimer() const { return m_exactTimer; }
    [[nodiscard]] const TimerDescriptor& coarseTimer() const { return m_coarseTimer; }

  private:
    enum class Kind { once, date, exact, coarse };

    struct Entry {
        std::shared_ptr<TaskState> state;
        Kind kind = Kind::once;
        double period = 0;
        double moment = 0;      ///< on CLOCK_BOOTTIME
        Timestamp wallTime = 0; ///< the same moment on the wall clock; no matter to a wait
    };

    /// Lives in an entry's callback and so dies with it: this is how a cancelled Task, which knows no
    /// scheduler, takes its entry along.
    class Presence;

    [[nodiscard]] Task add(Entry entry, std::function<void()> run);
    void forget(std::uint64_t id);
    void align(Entry& entry, Timestamp after) const;
    void advance(Entry& entry) const;
    void fire(const std::vector<std::uint64_t>& due);
    void fireExact();
    void fireCoarse();
    void armTimers();
    [[nodiscard]] double coarseTick(double moment) const;
    [[nodiscard]] std::optional<double> earliestExact() const;
    [[nodiscard]] std::optional<double> nextCoarseTick() const;

    std::function<Timestamp()> m_wallClock;
    std::map<std::uint64_t, Entry> m_entries;
    std::uint64_t m_lastId = 0;
    TimerDescriptor m_exactTimer;
    TimerDescriptor m_coarseTimer;
    TimerDescriptor m_clockWatch;
};

} // namespace veslora
