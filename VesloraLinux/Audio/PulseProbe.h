// SPDX-License-Identifier: MIT
// Looks whether a server answers, and plays nothing. Made, run and destroyed on one thread of its own.
#pragma once

#include "VesloraLinux/Audio/PulseSession.h"

namespace veslora {

/// Finished when the server has answered.
class PulseProbe final : public PulseSession {
  public:
    using PulseSession::PulseSession;

  private:
    void serverReady() override { finish(); }
    void wrote(std::size_t /*samples*/) override {}
    /// That nobody answers yet is no news: the session that lost the server has said so.
    void tellOfFailure(const char* /*what*/, const char* /*reason*/) override {}
};

} // namespace veslora
