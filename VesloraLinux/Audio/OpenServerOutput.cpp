// SPDX-License-Identifier: MIT
#include "VesloraLinux/Audio/OpenServerOutput.h"

#include "VesloraLinux/Audio/OpenStream.h"
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
struct OpenServerOutput::Stream {
    explicit Stream(std::shared_ptr<Mixer> rendered) : mixer(std::move(rendered)) {}

    /// The stream's thread. Whether there is a way to a server; only the first word counts.
    void tellFound(bool isThere) {
        if (!std::exchange(isFound, true)) {
            found.set_value(isThere);
        }
    }

    void awaitQueue() const {
        pollfd events[] = {{queued.value(), POLLIN, 0}, {stop.value(), POLLIN, 0}};
        poll(events, std::size(events), -1);
    }

    const std::shared_ptr<Mixer> mixer;
    const FileDescriptor stop{eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)};
    const FileDescriptor queued{eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)}; ///< once the first sounds are
    std::promise<bool> found;
    bool isFound = false; ///< the thread's own: whether that was told
    OpenStream open{.mixer = *mixer,
                    .stopDescriptor = stop.value(),
                    .found = [this] { tellFound(true); },
                    .awaitQueue = [this] { awaitQueue(); }};
    std::atomic<bool> isPlaying = true;
    std::thread thread;
};

namespace {

/// A server that restarts is away for a moment, in which no start would find it.
std::optional<OpenAudioOutput::Loss> awaitServer(const SoundServer& server, const OpenStream& stream) {
    const auto deadline = std::chrono::steady_clock::now() + server.patience();
    pollfd stopped{.fd = stream.stopDescriptor, .events = POLLIN, .revents = 0};
    while (std::chrono::steady_clock::now() < deadline) {
        if (server.isThere(stream)) {
            return OpenAudioOutput::Loss::changed;
        }
        if (poll(&stopped, 1, OpenServerOutput::lookingPeriod.count()) > 0) {
            return std::nullopt;
        }
    }
    return OpenAudioOutput::Loss::failed;
}

} // namespace

OpenServerOutput::OpenServerOutput(Servers servers) : m_servers(std::move(servers)) {}

OpenServerOutput::~OpenServerOutput() {
    stop();
    for (const auto& stream : m_streams) {
        stream->thread.join();
    }
}

bool OpenServerOutput::start(std::shared_ptr<Mixer> mixer, std::function<void(Loss)> lost) {
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

void OpenServerOutput::letRender(const Stream* stream) const {
    const auto found = std::ranges::find(m_streams, stream, &std::unique_ptr<Stream>::get);
    if (found != m_streams.end()) {
        eventfd_write((*found)->queued.value(), 1);
    }
}

void OpenServerOutput::stop() {
    if (m_stream != nullptr) {
        eventfd_write(m_stream->stop.value(), 1);
        m_stream = nullptr;
        m_lost = nullptr;
    }
}

void OpenServerOutput::run(Stream& stream) {
    const std::optional<Loss> loss = play(stream);
    stream.tellFound(false);
    QMetaObject::invokeMethod(
        &m_mainThread, [this, &stream, loss] { ended(&stream, loss); }, Qt::QueuedConnection);
}

/// Why it ended; absent when it was stopped.
std::optional<OpenAudioOutput::Loss> OpenServerOutput::play(Stream& stream) {
    for (const auto& server : m_servers) {
        const std::optional<SessionEnd> end = server->play(stream.open);
        if (end == SessionEnd::stopped) {
            return std::nullopt;
        }
        if (stream.mixer->position() > 0) {
            stream.isPlaying = false;
            return end == SessionEnd::finished ? Loss::changed : awaitServer(*server, stream.open);
        }
    }
    return Loss::failed;
}

void OpenServerOutput::ended(const Stream* stream, std::optional<Loss> loss) {
    const auto found = std::ranges::find(m_streams, stream, &std::unique_ptr<Stream>::get);
    (*found)->thread.join();
    const bool isCurrent = m_stream == stream;
    m_streams.erase(found);
    if (isCurrent && loss) {
        m_stream = nullptr;
        std::exchange(m_lost, nullptr)(*loss);
    }
}

std::optional<std::int64_t> OpenServerOutput::currentSample() const {
    if (m_stream == nullptr || !m_stream->isPlaying) {
        return std::nullopt;
    }
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    const auto sample =
        m_stream->open.clock.sampleAt(std::chrono::duration_cast<std::chrono::nanoseconds>(now).count());
    // A block that comes late is followed by one that is sooner than the clock had expected.
    m_lastSample = std::max(m_lastSample, sample);
    return m_lastSample;
}

std::int64_t OpenServerOutput::latency() const {
    return m_stream == nullptr ? 0 : m_stream->open.latency.value();
}

} // namespace veslora
