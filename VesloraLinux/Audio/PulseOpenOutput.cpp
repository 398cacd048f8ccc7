// SPDX-License-Identifier: MIT
#include "VesloraLinux/Audio/PulseOpenOutput.h"

#include "VesloraLinux/Audio/Mixer.h"
#include "VesloraLinux/Audio/PulseOpenSession.h"
#include "VesloraLinux/Audio/PulseProbe.h"
#include "VesloraLinux/System/FileDescriptor.h"
#include "VesloraUI/Platform/Logs.h"

#include <poll.h>
#include <sys/eventfd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <future>
#include <system_error>
#include <utility>

namespace veslora {

/// What the main thread and the thread of one stream share. The list that holds it lets it go only after that
/// thread has ended.
struct PulseOpenOutput::Stream {
    explicit Stream(std::shared_ptr<Mixer> rendered) : mixer(std::move(rendered)) {}

    /// The stream's thread. Whether there is a way to the server; only the first word counts.
    void tellFound(bool isThere) {
        if (!std::exchange(isFound, true)) {
            found.set_value(isThere);
        }
    }

    const std::shared_ptr<Mixer> mixer;
    const FileDescriptor stop{eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)};
    const FileDescriptor queued{eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)}; ///< once the first sounds are
    std::promise<bool> found;
    bool isFound = false; ///< the thread's own: whether that was told
    PulseOpenSession::Time time{.clock = SampleClock(Mixer::sampleRate), .latency = {}};
    std::atomic<bool> isPlaying = true;
    std::thread thread;
};

PulseOpenOutput::PulseOpenOutput(PulseOptions options) : m_options(std::move(options)) {}

PulseOpenOutput::~PulseOpenOutput() {
    stop();
    for (const auto& stream : m_streams) {
        stream->thread.join();
    }
}

bool PulseOpenOutput::start(std::shared_ptr<Mixer> mixer, std::function<void(Loss)> lost) {
    auto made = std::make_unique<Stream>(std::move(mixer));
    if (!made->stop || !made->queued) {
        qCWarning(Logs::audio, "no sound, as no event can be had: %s", std::strerror(errno));
        return false;
    }
    Stream& stream = *made;
    std::future<bool> found = stream.found.get_future();
    try {
        stream.thread = std::thread([this, &stream] { run(stream); });
    } catch (const std::system_error& error) {
        qCWarning(Logs::audio, "no sound, as no thread can be had: %s", error.what());
        return false;
    }
    m_streams.push_back(std::move(made));
    if (found.wait_for(findingTime) == std::future_status::ready && !found.get()) {
        return false;
    }
    m_stream = &stream;
    m_lost = std::move(lost);
    m_lastSample = std::nullopt;
    // A server wants a fifth of a second at once, which may be before the caller has queued its first sounds.
    QMetaObject::invokeMethod(
        &m_mainThread, [this, made = &stream] { letRender(made); }, Qt::QueuedConnection);
    return true;
}

void PulseOpenOutput::letRender(const Stream* stream) const {
    const auto found = std::ranges::find(m_streams, stream, &std::unique_ptr<Stream>::get);
    if (found != m_streams.end()) {
        eventfd_write((*found)->queued.value(), 1);
    }
}

void PulseOpenOutput::stop() {
    if (m_stream != nullptr) {
        eventfd_write(m_stream->stop.value(), 1);
        m_stream = nullptr;
        m_lost = nullptr;
    }
}

void PulseOpenOutput::run(Stream& stream) {
    const std::optional<Loss> loss = play(stream);
    stream.tellFound(false);
    QMetaObject::invokeMethod(
        &m_mainThread, [this, &stream, loss] { ended(&stream, loss); }, Qt::QueuedConnection);
}

/// Why it ended; absent when it was stopped.
std::optional<OpenAudioOutput::Loss> PulseOpenOutput::play(Stream& stream) {
    const auto library = PulseLibrary::load(m_options.library);
    if (!library) {
        return Loss::failed;
    }
    PulseSession::End end = PulseSession::End::failed;
    {
        const PulseOpenSession::Hooks hooks{
            .found = [&stream] { stream.tellFound(true); },
            .awaitQueue =
                [&stream] {
                    pollfd events[] = {{stream.queued.value(), POLLIN, 0}, {stream.stop.value(), POLLIN, 0}};
                    poll(events, std::size(events), -1);
                }};
        PulseOpenSession session(*library, m_options, *stream.mixer, stream.stop.value(), stream.time, hooks);
        end = session.run();
    }
    stream.isPlaying = false;
    switch (end) {
    case PulseSession::End::finished:
        return Loss::changed;
    case PulseSession::End::stopped:
        return std::nullopt;
    case PulseSession::End::failed:
        break;
    }
    return stream.mixer->position() > 0 ? awaitServer(*library, stream) : Loss::failed;
}

/// A server that restarts is away for a moment, in which no start would find it.
std::optional<OpenAudioOutput::Loss> PulseOpenOutput::awaitServer(const PulseLibrary& library,
                                                                  Stream& stream) const {
    const auto deadline = std::chrono::steady_clock::now() + m_options.patience;
    pollfd stopped{.fd = stream.stop.value(), .events = POLLIN, .revents = 0};
    while (std::chrono::steady_clock::now() < deadline) {
        PulseProbe probe(library, m_options, *stream.mixer, stream.stop.value());
        if (probe.run() == PulseSession::End::finished) {
            return Loss::changed;
        }
        if (poll(&stopped, 1, lookingPeriod.count()) > 0) {
            return std::nullopt;
        }
    }
    return Loss::failed;
}

void PulseOpenOutput::ended(const Stream* stream, std::optional<Loss> loss) {
    const auto found = std::ranges::find(m_streams, stream, &std::unique_ptr<Stream>::get);
    (*found)->thread.join();
    const bool isCurrent = m_stream == stream;
    m_streams.erase(found);
    if (isCurrent && loss) {
        m_stream = nullptr;
        std::exchange(m_lost, nullptr)(*loss);
    }
}

std::optional<std::int64_t> PulseOpenOutput::currentSample() const {
    if (m_stream == nullptr || !m_stream->isPlaying) {
        return std::nullopt;
    }
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    const auto sample =
        m_stream->time.clock.sampleAt(std::chrono::duration_cast<std::chrono::nanoseconds>(now).count());
    // A block that comes late is followed by one that is sooner than the clock had expected.
    m_lastSample = std::max(m_lastSample, sample);
    return m_lastSample;
}

std::int64_t PulseOpenOutput::latency() const {
    return m_stream == nullptr ? 0 : m_stream->time.latency.value();
}

} // namespace veslora
