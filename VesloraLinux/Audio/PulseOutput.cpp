// SPDX-License-Identifier: MIT
#include "VesloraLinux/Audio/PulseOutput.h"

#include "VesloraLinux/Audio/PulseAlertSession.h"
#include "VesloraUI/Platform/Logs.h"

#include <sys/eventfd.h>

#include <cerrno>
#include <cstring>
#include <system_error>
#include <utility>

namespace veslora {

PulseOutput::PulseOutput(PulseOptions options) : m_options(std::move(options)) {}

PulseOutput::~PulseOutput() {
    stop();
}

void PulseOutput::start(Mixer& mixer, std::function<void(AudioEnd)> ended) {
    m_ended = std::move(ended);
    m_stop = FileDescriptor(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC));
    if (!m_stop) {
        qCWarning(Logs::audio, "no sound, as no event can be had: %s", std::strerror(errno));
    }
    ++m_start;
    try {
        m_thread = std::thread([this, &mixer, start = m_start] { run(mixer, start); });
    } catch (const std::system_error& error) {
        qCWarning(Logs::audio, "no sound, as no thread can be had: %s", error.what());
        tell(AudioEnd::failed, m_start); // the machine has no thread left
    }
}

void PulseOutput::run(Mixer& mixer, std::uint64_t start) {
    AudioEnd end = AudioEnd::failed;
    if (const auto library = m_stop ? PulseLibrary::load(m_options.library) : nullptr) {
        PulseAlertSession session(*library, m_options, mixer, m_stop.value());
        end = session.run() == SessionEnd::finished ? AudioEnd::played : AudioEnd::failed;
    }
    tell(end, start);
}

void PulseOutput::tell(AudioEnd end, std::uint64_t start) {
    QMetaObject::invokeMethod(
        &m_mainThread, [this, end, start] { sessionEnded(end, start); }, Qt::QueuedConnection);
}

void PulseOutput::sessionEnded(AudioEnd end, std::uint64_t start) {
    if (start != m_start) {
        return;
    }
    const auto ended = std::exchange(m_ended, nullptr);
    stop();
    ended(end);
}

void PulseOutput::stop() {
    ++m_start;
    m_ended = nullptr;
    if (m_thread.joinable()) {
        eventfd_write(m_stop.value(), 1);
        m_thread.join();
    }
    m_stop.close();
}

} // namespace veslora
