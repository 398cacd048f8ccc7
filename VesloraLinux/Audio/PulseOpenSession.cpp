// SPDX-License-Identifier: MIT
#include "VesloraLinux/Audio/PulseOpenSession.h"

#include "VesloraLinux/Audio/Mixer.h"
#include "VesloraUI/Platform/Logs.h"

#include <chrono>
#include <cstdint>

namespace veslora {

PulseOpenSession::PulseOpenSession(const PulseLibrary& library, const PulseOptions& options, OpenStream& open)
    : PulseSession(library, options, open.mixer, open.stopDescriptor), m_open(open) {}

void PulseOpenSession::serverReady() {
    // The server fills its buffer with the first block, and tells of a latency only some moments later:
    // until then nothing must seem to be heard already.
    m_open.latency.expect(bufferLength());
    m_open.awaitQueue();
    openStream();
}

pa_stream_flags_t PulseOpenSession::flags() const {
    return static_cast<pa_stream_flags_t>(PA_STREAM_ADJUST_LATENCY | PA_STREAM_INTERPOLATE_TIMING |
                                          PA_STREAM_AUTO_TIMING_UPDATE);
}

void PulseOpenSession::streamOpened() {
    library().stream_set_moved_callback(
        stream(), [](pa_stream*, void* session) { static_cast<PulseOpenSession*>(session)->moved(); }, this);
    library().stream_set_underflow_callback(
        stream(), [](pa_stream*, void*) { qCInfo(Logs::audio, "the sound server ran out of samples"); },
        nullptr);
}

void PulseOpenSession::wrote(std::size_t samples) {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    m_open.clock.mark(mixer().position(), static_cast<std::int64_t>(samples),
                      std::chrono::duration_cast<std::chrono::nanoseconds>(now).count());
    measureLatency();
}

/// Of what was just written, which is where the clock is now. A server that does not know it yet is asked
/// after the next block.
void PulseOpenSession::measureLatency() {
    pa_usec_t microseconds = 0;
    int isNegative = 0;
    if (library().stream_get_latency(stream(), &microseconds, &isNegative) >= 0) {
        constexpr std::int64_t second = 1'000'000;
        const auto magnitude = static_cast<std::int64_t>(microseconds);
        m_open.latency.add(isNegative != 0 ? 0 : magnitude * Mixer::sampleRate / second);
    }
}

void PulseOpenSession::moved() {
    if (mixer().position() < OpenStream::settling) {
        m_open.latency.measureAgain();
    } else {
        qCInfo(Logs::audio, "sound goes to another device");
        finish();
    }
}

} // namespace veslora
