// SPDX-License-Identifier: MIT
// One stream to a PulseAudio or PipeWire server, from the connection to its end, which the derived class
// decides on. Made, run and destroyed on one thread of its own: even making it may wait, since libpulse asks
// the X server for the address.
#pragma once

#include "VesloraLinux/Audio/PulseLibrary.h"
#include "VesloraLinux/Audio/SessionEnd.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace veslora {

class Mixer;

struct PulseOptions {
    std::string library = "libpulse.so.0";
    /// An address as libpulse knows it; empty for the server of the user's session.
    std::string server;
    /// How much of the sound the server is given ahead. Shorter ones run dry on a machine under load.
    std::chrono::milliseconds buffer{200};
    /// After this time without any progress, at whatever stage, the server counts as lost.
    std::chrono::milliseconds patience{5000};
};

class PulseSession {
  public:
    /// `stopDescriptor` becomes readable when the session is to end early.
    PulseSession(const PulseLibrary& library, const PulseOptions& options, Mixer& mixer, int stopDescriptor);
    PulseSession(const PulseSession&) = delete;
    PulseSession& operator=(const PulseSession&) = delete;
    virtual ~PulseSession();

    /// Goes on until the derived class or `stopDescriptor` ends it, or it fails. No server is started where
    /// none runs. The stream goes where the user's sounds go, also when that changes meanwhile.
    [[nodiscard]] SessionEnd run();

  protected:
    /// The way to a server is there, though it may not have answered yet.
    virtual void serverFound() {}
    /// The server answers: opens the stream.
    virtual void serverReady() { openStream(); }
    /// The stream is there, not yet connected.
    virtual void streamOpened() {}
    /// Something was rendered and written.
    virtual void wrote(std::size_t samples) = 0;
    /// The first failure, once.
    virtual void tellOfFailure(const char* what, const char* reason);
    /// What desktops sort a stream under in their mixers; null for the program's own name.
    [[nodiscard]] virtual const char* role() const { return nullptr; }
    [[nodiscard]] virtual pa_stream_flags_t flags() const { return PA_STREAM_ADJUST_LATENCY; }

    void openStream();
    /// Nothing is written any more.
    void stopWriting() { m_isWriting = false; }
    void finish();
    /// `reason` as libpulse counts them; absent for what the connection says.
    void fail(const char* what, std::optional<int> reason = std::nullopt);

    [[nodiscard]] const PulseLibrary& library() const { return m_library; }
    [[nodiscard]] Mixer& mixer() const { return m_mixer; }
    /// Of the options, in samples.
    [[nodiscard]] std::int64_t bufferLength() const;
    [[nodiscard]] pa_stream* stream() const { return m_stream; }

  private:
    void contextChanged();
    void streamChanged();
    void write(std::size_t bytes);
    void markProgress();
    void iterate();

    const PulseLibrary& m_library;
    const PulseOptions& m_options;
    Mixer& m_mixer;
    std::optional<SessionEnd> m_end; ///< absent while it goes on
    bool m_isWriting = true;
    std::chrono::steady_clock::time_point m_deadline;
    pa_mainloop* m_loop = nullptr;
    pa_io_event* m_stopEvent = nullptr;
    pa_context* m_context = nullptr;
    pa_stream* m_stream = nullptr;
};

} // namespace veslora
