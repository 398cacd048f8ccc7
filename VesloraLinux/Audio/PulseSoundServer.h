// SPDX-License-Identifier: MIT
// PulseAudio, or PipeWire's service for its programs.
#pragma once

#include "VesloraLinux/Audio/PulseSession.h"
#include "VesloraLinux/Audio/SoundServer.h"

namespace veslora {

class PulseSoundServer final : public SoundServer {
  public:
    explicit PulseSoundServer(PulseOptions options = {});

    [[nodiscard]] std::optional<SessionEnd> play(OpenStream& stream) const override;
    [[nodiscard]] bool isThere(const OpenStream& stream) const override;
    [[nodiscard]] std::chrono::milliseconds patience() const override { return m_options.patience; }

  private:
    const PulseOptions m_options;
};

} // namespace veslora
