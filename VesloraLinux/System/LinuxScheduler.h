// SPDX-License-Identifier: MIT
// Time by two kernel timers: one for exact deadlines, one that all coarse repetitions share. Neither is armed
// while nothing waits, so a program at rest is never woken. Main thread only, apart from background work.
#pragma once

#include "VesloraUI/Platform/Scheduler.h"

#include <QObject>
#include <QThreadPool>

#include <memory>

namespace veslora {

class Deadlines;

class LinuxScheduler final : public Scheduler {
  public:
    /// `wallClock` is what `now` tells; by default the system's.
    explicit LinuxScheduler(std::function<Timestamp()> wallClock = {});
    /// Waits for the background work that runs, drops what is queued, and drops every callback.
    ~LinuxScheduler() override;
    LinuxScheduler(const LinuxScheduler&) = delete;
    LinuxScheduler& operator=(const LinuxScheduler&) = delete;

    [[nodiscard]] Timestamp now() const override;
    /// CLOCK_BOOTTIME.
    [[nodiscard]] double steadyNow() const override;
    /// Ends early only when somebody sets the wall clock past the moment that was meant: a caller that waits
    /// for a time of day must look again then, and so must every other.
    [[nodiscard]] Task after(double seconds, std::function<void()> run) override;
    [[nodiscard]] Task at(Timestamp date, std::function<void()> run) override;
    [[nodiscard]] Task every(double seconds, Precision precision, std::function<void()> run) override;
    [[nodiscard]] Task background(std::function<void()> work, std::function<void()> then) override;
    [[nodiscard]] Task concurrently(std::function<void()> work, std::function<void()> then) override;

    /// Looks at every deadline again, as after a step of the wall clock.
    void wallClockWasSet();

    /// The descriptors of the two timers, for tests that ask the kernel whether they are armed.
    [[nodiscard]] int exactTimer() const;
    [[nodiscard]] int coarseTimer() const;

  private:
    enum class Priority { low, usual };
    Task start(QThreadPool& pool, Priority priority, std::function<void()> work, std::function<void()> then);

    std::shared_ptr<Deadlines> m_deadlines;
    std::unique_ptr<QObject> m_mainThread;
    QThreadPool m_background;
    QThreadPool m_concurrent;
};

} // namespace veslora
