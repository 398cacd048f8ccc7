// SPDX-License-Identifier: MIT
#include "VesloraLinux/Audio/PipeWireOpenSession.h"

#include "VesloraLinux/Audio/Mixer.h"
#include "VesloraUI/Platform/Logs.h"

#include <spa/param/audio/format-utils.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <utility>

namespace veslora {
namespace {

/// What the server is asked to have played at a time; it takes less where another program wants less. Twice
/// its own habit, which halves how often everybody wakes up.
constexpr const char* blockLength = "2048/48000";

/// So many of the graph's samples in samples of the mixer.
std::int64_t inSamples(std::int64_t ticks, const spa_fraction& rate) {
    return rate.denom == 0 ? ticks : ticks * rate.num * Mixer::sampleRate / rate.denom;
}

} // namespace

PipeWireOpenSession::PipeWireOpenSession(const PipeWireLibrary& library, const PipeWireOptions& options,
                                         OpenStream& open)
    : PipeWireSession(library, options, open.stopDescriptor), m_open(open) {
    m_events.version = PW_VERSION_STREAM_EVENTS;
    m_events.state_changed = [](void* session, pw_stream_state, pw_stream_state state, const char* error) {
        static_cast<PipeWireOpenSession*>(session)->streamChanged(state, error);
    };
    m_events.process = [](void* session) { static_cast<PipeWireOpenSession*>(session)->render(); };
}

PipeWireOpenSession::~PipeWireOpenSession() {
    if (m_stream != nullptr) {
        spa_hook_remove(&m_hook);
        // Waits for the block that is being rendered.
        library().stream_destroy(m_stream);
    }
}

void PipeWireOpenSession::serverReady() {
    m_open.found();
    m_open.awaitQueue();
    openStream();
}

void PipeWireOpenSession::openStream() {
    m_gapSource = pw_loop_add_event(
        loop(), [](void*, std::uint64_t) { qCInfo(Logs::audio, "the sound server ran out of samples"); },
        this);
    m_stream = library().stream_new(core(), "Veslora",
                                    library().properties_new(PW_KEY_MEDIA_TYPE, "Audio",        //
                                                             PW_KEY_MEDIA_CATEGORY, "Playback", //
                                                             PW_KEY_NODE_NAME, "Veslora",       //
                                                             PW_KEY_NODE_LATENCY, blockLength,  //
                                                             nullptr));
    if (m_stream == nullptr || m_gapSource == nullptr) {
        fail("no stream can be made", std::strerror(errno));
        return;
    }
    library().stream_add_listener(m_stream, &m_hook, &m_events, this);
    std::array<std::byte, 1024> memory{};
    spa_pod_builder builder{};
    spa_pod_builder_init(&builder, memory.data(), memory.size());
    spa_audio_info_raw format{};
    format.format = SPA_AUDIO_FORMAT_F32;
    format.rate = Mixer::sampleRate;
    format.channels = 1;
    format.position[0] = SPA_AUDIO_CHANNEL_MONO;
    const spa_pod* parameters[] = {spa_format_audio_raw_build(&builder, SPA_PARAM_EnumFormat, &format)};
    const int flags = PW_STREAM_FLAG_AUTOCONNECT | PW_STREAM_FLAG_MAP_BUFFERS | PW_STREAM_FLAG_RT_PROCESS;
    const int result = library().stream_connect(m_stream, PW_DIRECTION_OUTPUT, PW_ID_ANY,
                                                static_cast<pw_stream_flags>(flags), parameters, 1);
    if (result < 0) {
        fail("the stream can't be connected", std::strerror(-result));
    }
}

void PipeWireOpenSession::streamChanged(pw_stream_state state, const char* error) {
    if (state == PW_STREAM_STATE_ERROR || state == PW_STREAM_STATE_UNCONNECTED) {
        fail("the stream is lost", error == nullptr ? "no reason is given" : error);
    }
}

bool PipeWireOpenSession::hasProgress() {
    const std::int64_t former = std::exchange(m_position, m_open.mixer.position());
    return m_position > former;
}

/// A stream that goes nowhere for a moment is on its way from one device to another.
void PipeWireOpenSession::linksChanged() {
    if (m_stream == nullptr) {
        return;
    }
    const std::set<std::uint32_t> targets = targetsOf(library().stream_get_node_id(m_stream));
    if (targets.empty() || (m_target && targets.contains(*m_target))) {
        return;
    }
    if (m_target && m_open.mixer.position() >= OpenStream::settling) {
        qCInfo(Logs::audio, "sound goes to another device");
        finish();
    } else {
        m_target = *targets.begin();
        m_measuresAgain = true;
    }
}

void PipeWireOpenSession::render() noexcept {
    pw_buffer* const buffer = library().stream_dequeue_buffer(m_stream);
    if (buffer == nullptr) {
        return;
    }
    const spa_data& data = *buffer->buffer->datas;
    const std::size_t room = data.data == nullptr ? 0 : data.maxsize / sizeof(float);
    const std::size_t samples =
        buffer->requested == 0 ? room : std::min<std::size_t>(buffer->requested, room);
    pw_time time{};
    library().stream_get_time_n(m_stream, &time, sizeof time);
    m_open.mixer.render({static_cast<float*>(data.data), samples});
    data.chunk->offset = 0;
    data.chunk->stride = sizeof(float);
    data.chunk->size = static_cast<std::uint32_t>(samples * sizeof(float));
    buffer->size = samples;
    library().stream_queue_buffer(m_stream, buffer);
    lookForGap(time, samples);
    tellTime(time, samples);
}

/// The first of these samples is heard after what lies before it in the stream and the delay from there on.
void PipeWireOpenSession::tellTime(const pw_time& time, std::size_t samples) noexcept {
    const auto block = static_cast<std::int64_t>(samples);
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    const std::int64_t moment =
        time.now > 0 ? time.now : std::chrono::duration_cast<std::chrono::nanoseconds>(now).count();
    m_open.clock.mark(m_open.mixer.position(), block, moment);
    if (m_measuresAgain.exchange(false)) {
        m_open.latency.measureAgain();
    }
    if (time.rate.denom != 0) {
        m_open.latency.add(inSamples(time.delay, time.rate) +
                           static_cast<std::int64_t>(time.queued + time.buffered) + block);
    }
}

/// The graph has moved on by more than the last block, so nothing was there for a while. This thread must not
/// write a line of its own.
void PipeWireOpenSession::lookForGap(const pw_time& time, std::size_t samples) noexcept {
    if (m_nextTick && time.ticks > *m_nextTick) {
        pw_loop_signal_event(loop(), m_gapSource);
    }
    const std::uint64_t rate = time.rate.denom == 0 ? Mixer::sampleRate : time.rate.denom;
    m_nextTick = time.ticks + samples * rate / Mixer::sampleRate + 1;
}

} // namespace veslora
