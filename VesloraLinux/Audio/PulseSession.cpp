// SPDX-License-Identifier: MIT
#include "VesloraLinux/Audio/PulseSession.h"

#include "VesloraLinux/Audio/Mixer.h"
#include "VesloraUI/Platform/Logs.h"

#include <algorithm>
#include <cstdint>

namespace veslora {
namespace {

constexpr pa_sample_spec format{PA_SAMPLE_FLOAT32NE, Mixer::sampleRate, 1};

constexpr std::int64_t bytesInSample = sizeof(float);
constexpr auto byDefault = static_cast<std::uint32_t>(-1);

} // namespace

PulseSession::PulseSession(const PulseLibrary& library, const PulseOptions& options, Mixer& mixer,
                           int stopDescriptor)
    : m_library(library), m_options(options), m_mixer(mixer), m_loop(library.mainloop_new()) {
    if (m_loop == nullptr) {
        return;
    }
    pa_mainloop_api* const api = m_library.mainloop_get_api(m_loop);
    const auto stopped = [](pa_mainloop_api*, pa_io_event*, int, pa_io_event_flags_t, void* session) {
        static_cast<PulseSession*>(session)->m_end = SessionEnd::stopped;
    };
    m_stopEvent = api->io_new(api, stopDescriptor, PA_IO_EVENT_INPUT, stopped, this);
    m_context = m_library.context_new(api, "Veslora");
}

PulseSession::~PulseSession() {
    // Callbacks go first: the farewell changes states too.
    if (m_stream != nullptr) {
        m_library.stream_set_state_callback(m_stream, nullptr, nullptr);
        m_library.stream_set_write_callback(m_stream, nullptr, nullptr);
        m_library.stream_disconnect(m_stream);
        m_library.stream_unref(m_stream);
    }
    if (m_context != nullptr) {
        m_library.context_set_state_callback(m_context, nullptr, nullptr);
        m_library.context_disconnect(m_context);
        m_library.context_unref(m_context);
    }
    if (m_loop != nullptr) {
        m_library.mainloop_get_api(m_loop)->io_free(m_stopEvent);
        m_library.mainloop_free(m_loop);
    }
}

void PulseSession::finish() {
    if (!m_end) {
        m_end = SessionEnd::finished;
    }
}

void PulseSession::fail(const char* what, std::optional<int> reason) {
    // What follows from the first failure is none of its own.
    if (!m_end) {
        m_end = SessionEnd::failed;
        tellOfFailure(what, m_library.strerror(reason ? *reason : m_library.context_errno(m_context)));
    }
}

void PulseSession::tellOfFailure(const char* what, const char* reason) {
    qCWarning(Logs::audio, "no sound: %s: %s", what, reason);
}

SessionEnd PulseSession::run() {
    if (m_context == nullptr) {
        fail("no connection can be made", PA_ERR_INTERNAL);
        return SessionEnd::failed;
    }
    m_library.context_set_state_callback(
        m_context, [](pa_context*, void* session) { static_cast<PulseSession*>(session)->contextChanged(); },
        this);
    const char* const server = m_options.server.empty() ? nullptr : m_options.server.c_str();
    if (m_library.context_connect(m_context, server, PA_CONTEXT_NOAUTOSPAWN, nullptr) < 0) {
        fail("no server can be reached");
    }
    markProgress();
    while (!m_end) {
        iterate();
    }
    return *m_end;
}

void PulseSession::markProgress() {
    m_deadline = std::chrono::steady_clock::now() + m_options.patience;
}

void PulseSession::iterate() {
    const auto left =
        std::chrono::ceil<std::chrono::milliseconds>(m_deadline - std::chrono::steady_clock::now());
    const auto microseconds = static_cast<int>(std::chrono::microseconds(left).count());
    if (microseconds <= 0) {
        fail("the server makes no progress", PA_ERR_TIMEOUT);
    } else if (m_library.mainloop_prepare(m_loop, microseconds) < 0 || m_library.mainloop_poll(m_loop) < 0 ||
               m_library.mainloop_dispatch(m_loop) < 0) {
        fail("the server can't be waited for");
    }
}

void PulseSession::contextChanged() {
    const pa_context_state_t state = m_library.context_get_state(m_context);
    if (!PA_CONTEXT_IS_GOOD(state)) {
        fail("the connection is lost, or there never was one");
    } else if (state == PA_CONTEXT_AUTHORIZING) {
        serverFound();
    } else if (state == PA_CONTEXT_READY) {
        qCInfo(Logs::audio, "reached the sound server at %s", m_library.context_get_server(m_context));
        markProgress();
        serverReady();
    }
}

std::int64_t PulseSession::bufferLength() const {
    return m_options.buffer.count() * Mixer::sampleRate / 1000;
}

void PulseSession::openStream() {
    pa_proplist* const properties = m_library.proplist_new();
    if (role() != nullptr) {
        m_library.proplist_sets(properties, PA_PROP_MEDIA_ROLE, role());
    }
    m_stream = m_library.stream_new_with_proplist(m_context, "Veslora", &format, nullptr, properties);
    m_library.proplist_free(properties);
    if (m_stream == nullptr) {
        fail("no stream can be made");
        return;
    }
    m_library.stream_set_state_callback(
        m_stream, [](pa_stream*, void* session) { static_cast<PulseSession*>(session)->streamChanged(); },
        this);
    m_library.stream_set_write_callback(
        m_stream,
        [](pa_stream*, std::size_t bytes, void* session) {
            static_cast<PulseSession*>(session)->write(bytes);
        },
        this);
    streamOpened();
    const auto length = static_cast<std::uint32_t>(bufferLength() * bytesInSample);
    const pa_buffer_attr buffer{byDefault, length, byDefault, byDefault, byDefault};
    // No device is named and moving is not forbidden, so the stream follows the default one.
    if (m_library.stream_connect_playback(m_stream, nullptr, &buffer, flags(), nullptr, nullptr) < 0) {
        fail("the stream can't be connected");
    }
}

void PulseSession::streamChanged() {
    if (PA_STREAM_IS_GOOD(m_library.stream_get_state(m_stream))) {
        markProgress();
    } else {
        fail("the stream is lost");
    }
}

void PulseSession::write(std::size_t bytes) {
    markProgress();
    while (bytes >= sizeof(float) && m_isWriting) {
        void* memory = nullptr;
        std::size_t size = bytes;
        if (m_library.stream_begin_write(m_stream, &memory, &size) < 0 || memory == nullptr) {
            fail("the stream takes nothing");
            return;
        }
        const std::size_t count = std::min(size, bytes) / sizeof(float);
        m_mixer.render({static_cast<float*>(memory), count});
        if (m_library.stream_write(m_stream, memory, count * sizeof(float), nullptr, 0, PA_SEEK_RELATIVE) <
            0) {
            fail("the stream can't be written to");
            return;
        }
        bytes -= count * sizeof(float);
        wrote(count);
    }
}

} // namespace veslora
