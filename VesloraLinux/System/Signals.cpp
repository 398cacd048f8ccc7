// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/Signals.h"

#include "VesloraUI/Platform/Logs.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <utility>

namespace veslora {
namespace {

constexpr std::array caught{SIGTERM, SIGINT, SIGHUP};

// A handler may touch nothing but this: the descriptor that wakes the event loop.
std::atomic<int> wakeUp = -1;
static_assert(std::atomic<int>::is_always_lock_free);
std::array<struct sigaction, caught.size()> formerActions;

void handle(int) {
    const int error = errno;
    const std::uint64_t one = 1;
    // The only failure is a counter that is full of wake-ups already.
    [[maybe_unused]] const ssize_t written = write(wakeUp, &one, sizeof one);
    errno = error;
}

} // namespace

Signals::Signals(std::function<void()> endAsked) : m_endAsked(std::move(endAsked)) {
    wakeUp = eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC);
    if (wakeUp < 0) {
        qCWarning(Logs::start, "the signals that ask for the end go unheard: %s", std::strerror(errno));
    }
    m_notifier = std::make_unique<QSocketNotifier>(wakeUp, QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &Signals::signalArrived);
    struct sigaction action {};
    action.sa_handler = &handle;
    action.sa_flags = SA_RESTART;
    for (std::size_t index = 0; index < caught.size(); ++index) {
        sigaction(caught[index], &action, &formerActions[index]);
    }
}

Signals::~Signals() {
    for (std::size_t index = 0; index < caught.size(); ++index) {
        sigaction(caught[index], &formerActions[index], nullptr);
    }
    m_notifier.reset();
    close(wakeUp.exchange(-1));
}

void Signals::signalArrived() {
    std::uint64_t count = 0;
    if (read(wakeUp, &count, sizeof count) > 0) {
        if (const auto endAsked = std::exchange(m_endAsked, nullptr)) {
            qCInfo(Logs::start, "a signal asks for the end");
            endAsked();
        }
    }
}

} // namespace veslora
