// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/LinuxScheduler.h"

#include "VesloraLinux/System/Deadlines.h"

#include <sys/resource.h>
#include <unistd.h>

namespace veslora {
namespace {

/// On Linux niceness belongs to the thread, although POSIX gives it to the process.
void makeThisThreadNice() {
    constexpr int nice = 10;
    setpriority(PRIO_PROCESS, static_cast<id_t>(gettid()), nice);
}

} // namespace

LinuxScheduler::LinuxScheduler(std::function<Timestamp()> wallClock)
    : m_deadlines(std::make_shared<Deadlines>(wallClock ? std::move(wallClock)
                                                        : [] { return readClock(CLOCK_REALTIME); })) {
    m_pool.setMaxThreadCount(2);
}

LinuxScheduler::~LinuxScheduler() {
    m_pool.clear();
    m_pool.waitForDone();
}

Timestamp LinuxScheduler::now() const {
    return m_deadlines->now();
}

Task LinuxScheduler::after(double seconds, std::function<void()> run) {
    return m_deadlines->addOnce(seconds, std::move(run));
}

Task LinuxScheduler::every(double seconds, Precision precision, std::function<void()> run) {
    return m_deadlines->addRepeating(seconds, precision, std::move(run));
}

Task LinuxScheduler::background(std::function<void()> work, std::function<void()> then) {
    auto state = std::make_shared<TaskState>();
    state->run = std::move(then);
    // The pool's thread hands the state on without looking into it: its callback is the main thread's.
    m_pool.start([this, state, work = std::move(work)] {
        makeThisThreadNice();
        work();
        const auto finish = [state] {
            if (const auto run = std::exchange(state->run, nullptr)) {
                run();
            }
        };
        QMetaObject::invokeMethod(&m_mainThread, finish, Qt::QueuedConnection);
    });
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
