// SPDX-License-Identifier: MIT
// Looks whether PipeWire has a device to play to, and plays nothing. Made, run and destroyed on one thread of
// its own.
#pragma once

#include "VesloraLinux/Audio/PipeWireSession.h"

namespace veslora {

/// Finished when it has one.
class PipeWireProbe final : public PipeWireSession {
  public:
    using PipeWireSession::PipeWireSession;

  private:
    void serverReady() override { finish(); }
};

} // namespace veslora
