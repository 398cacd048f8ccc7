// SPDX-License-Identifier: MIT
// Plays a stream until it is stopped, also while it is silent, and tells the time by the server's device.
// Made, run and destroyed on one thread of its own.
#pragma once

#include "VesloraLinux/Audio/OpenStream.h"
#include "VesloraLinux/Audio/PulseSession.h"

namespace veslora {

/// Finished when the stream was moved to another device.
class PulseOpenSession final : public PulseSession {
  public:
    PulseOpenSession(const PulseLibrary& library, const PulseOptions& options, OpenStream& open);

  private:
    void serverFound() override { m_open.found(); }
    void serverReady() override;
    void streamOpened() override;
    void wrote(std::size_t samples) override;
    [[nodiscard]] pa_stream_flags_t flags() const override;
    void moved();
    void measureLatency();

    OpenStream& m_open;
};

} // namespace veslora
