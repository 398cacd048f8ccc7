// SPDX-License-Identifier: MIT
// PipeWire itself, where it has the loudspeakers.
#pragma once

#include "VesloraLinux/Audio/PipeWireSession.h"
#include "VesloraLinux/Audio/SoundServer.h"

namespace veslora {

class PipeWireSoundServer final : public SoundServer {
  public:
    explicit PipeWireSoundServer(PipeWireOptions options = {});

    [[nodiscard]] std::optional<SessionEnd> play(OpenStream& stream) const override;
    [[nodiscard]] bool isThere(const OpenStream& stream) const override;
    [[nodiscard]] std::chrono::milliseconds patience() const override { return m_options.patience; }

  private:
    [[nodiscard]] bool hasSocket() const;

    const PipeWireOptions m_options;
};

} // namespace veslora
