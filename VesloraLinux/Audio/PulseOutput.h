// SPDX-License-Identifier: MIT
// The loudspeakers behind a PulseAudio or PipeWire server. Each start has a thread and a connection of its
// own, so a server that dies costs the sounds that it was playing, and the next start finds the one that took
// its place. Without any server, or libpulse, a start ends as failed. Main thread only.
#pragma once

#include "VesloraLinux/Audio/AudioOutput.h"
#include "VesloraLinux/Audio/PulseSession.h"
#include "VesloraLinux/System/FileDescriptor.h"

#include <QObject>

#include <cstdint>
#include <thread>

namespace veslora {

class PulseOutput final : public AudioOutput {
  public:
    explicit PulseOutput(PulseOptions options = {});
    ~PulseOutput() override;
    PulseOutput(const PulseOutput&) = delete;
    PulseOutput& operator=(const PulseOutput&) = delete;

    void start(Mixer& mixer, std::function<void(AudioEnd)> ended) override;
    void stop() override;

  private:
    void run(Mixer& mixer, std::uint64_t start);
    void tell(AudioEnd end, std::uint64_t start);
    void sessionEnded(AudioEnd end, std::uint64_t start);

    const PulseOptions m_options;
    std::function<void(AudioEnd)> m_ended;
    /// Counts starts and stops, so that the end of one start is not taken for that of the next.
    std::uint64_t m_start = 0;
    QObject m_mainThread;
    FileDescriptor m_stop;
    std::thread m_thread;
};

} // namespace veslora
