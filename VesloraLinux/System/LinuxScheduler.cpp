// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/LinuxScheduler.h"

#include "VesloraLinux/System/Deadlines.h"

#include <QCoreApplication>
#include <QEvent>

#include <sys/resource.h>
#include <unistd.h>

#include <atomic>

namespace veslora {
namespace {

/// On Linux niceness belongs to the thread, although POSIX gives it to the process.
void makeThisThreadNice() {
    constexpr int nice = 10;
    setpriority(PRIO_PROCESS, static_cast<id_t>(gettid()), nice);
}

/// Orders what one thread gave before what another takes. Qt's own locks do that already, but the thread
/// sanitizer can't see into Qt and would take each hand-over for a race; it sees this.
class HandOver {
  public:
    static void give() { count().fetch_add(1, std::memory_order_release); }
    static void take() { static_cast<void>(count().load(std::memory_order_acquire)); }

  private:
    static std::atomic<unsigned>& count() {
        static constinit std::atomic<unsigned> count = 0;
        return count;
    }
};

/// Brings the end of background work to the main thread.
class WorkEnd final : public QEvent {
  public:
    explicit WorkEnd(std::shared_ptr<TaskState> state) : QEvent(QEvent::User), m_state(std::move(state)) {}

    void run() const {
        if (const auto then = std::exchange(m_state->run, nullptr)) {
            then();
        }
    }

  private:
    std::shared_ptr<TaskState> m_state;
};

class MainThread final : public QObject {
  public:
    bool event(QEvent* event) override {
        HandOver::take();
        if (event->type() != QEvent::User) {
            return QObject::event(event);
        }
        static_cast<const WorkEnd*>(event)->run();
        return true;
    }
};

} // namespace

LinuxScheduler::LinuxScheduler(std::function<Timestamp()> wallClock)
    : m_deadlines(std::make_shared<Deadlines>(wallClock ? std::move(wallClock)
                                                        : [] { return readClock(CLOCK_REALTIME); })),
      m_mainThread(std::make_unique<MainThread>()) {
    m_background.setMaxThreadCount(2);
    m_concurrent.setMaxThreadCount(1);
}

LinuxScheduler::~LinuxScheduler() {
    for (QThreadPool* pool : {&m_background, &m_concurrent}) {
        pool->clear();
        pool->waitForDone();
        HandOver::take();
    }
}

Timestamp LinuxScheduler::now() const {
    return m_deadlines->now();
}

double LinuxScheduler::steadyNow() const {
    return readClock(CLOCK_BOOTTIME);
}

Task LinuxScheduler::after(double seconds, std::function<void()> run) {
    return m_deadlines->addOnce(seconds, std::move(run));
}

Task LinuxScheduler::at(Timestamp date, std::function<void()> run) {
    return m_deadlines->addDate(date, std::move(run));
}

Task LinuxScheduler::every(double seconds, Precision precision, std::function<void()> run) {
    return m_deadlines->addRepeating(seconds, precision, std::move(run));
}

Task LinuxScheduler::background(std::function<void()> work, std::function<void()> then) {
    return start(m_background, Priority::low, std::move(work), std::move(then));
}

Task LinuxScheduler::concurrently(std::function<void()> work, std::function<void()> then) {
    return start(m_concurrent, Priority::usual, std::move(work), std::move(then));
}

Task LinuxScheduler::start(QThreadPool& pool, Priority priority, std::function<void()> work,
                           std::function<void()> then) {
    auto state = std::make_shared<TaskState>();
    state->run = std::move(then);
    // The pool's thread hands the state on without looking into it: its callback is the main thread's.
    std::function<void()> job = [this, state, priority, work = std::move(work)] {
        HandOver::take();
        if (priority == Priority::low) {
            makeThisThreadNice();
        }
        work();
        HandOver::give();
        QCoreApplication::postEvent(m_mainThread.get(), new WorkEnd(state));
    };
    HandOver::give();
    pool.start(std::move(job));
    return Task(std::move(state));
}

void LinuxScheduler::wallClockWasSet() {
    m_deadlines->wallClockWasSet();
}

int LinuxScheduler::exactTimer() const {
    return m_deadlines->exactTimer().descriptor();
}

int LinuxScheduler::coarseTimer() const {
    return m_deadlines->coarseTimer().descriptor();
}

} // namespace veslora
