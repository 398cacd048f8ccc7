// SPDX-License-Identifier: MIT
// One stream to a PulseAudio or PipeWire server, from the connection to the last sample heard. Made, run and
// destroyed on one thread of its own: even making it may wait, since libpulse asks the X server for the
// address.
#pragma once

#include "VesloraLinux/Audio/AudioOutput.h"
#include "VesloraLinux/Audio/PulseLibrary.h"

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>

namespace veslora {

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
    ~PulseSession();

    /// Plays until the mixer is silent and all was heard. No server is started where none runs. The stream
    /// goes where the user's sounds go, also when that changes meanwhile. `failed` when it was ended early.
    [[nodiscard]] AudioEnd run();

  private:
    enum class Stage { going, played, failed, stopped };

    void contextChanged();
    void streamChanged();
    void openStream();
    void write(std::size_t bytes);
    void drain();
    void markProgress();
    void iterate();
    /// `reason` as libpulse counts them; absent for what the connection says.
    void fail(const char* what, std::optional<int> reason = std::nullopt);

    const PulseLibrary& m_library;
    const PulseOptions& m_options;
    Mixer& m_mixer;
    Stage m_stage = Stage::going;
    bool m_isDraining = false;
    std::chrono::steady_clock::time_point m_deadline;
    pa_mainloop* m_loop = nullptr;
    pa_io_event* m_stopEvent = nullptr;
    pa_context* m_context = nullptr;
    pa_stream* m_stream = nullptr;
};

} // namespace veslora
