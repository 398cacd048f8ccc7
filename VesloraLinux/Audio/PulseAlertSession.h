// SPDX-License-Identifier: MIT
// Plays what a mixer has and ends when that was heard. Made, run and destroyed on one thread of its own.
#pragma once

#include "VesloraLinux/Audio/PulseSession.h"

namespace veslora {

/// Finished when the mixer was silent and all was heard.
class PulseAlertSession final : public PulseSession {
  public:
    using PulseSession::PulseSession;

  private:
    /// What desktops put under "System Sounds".
    [[nodiscard]] const char* role() const override { return "event"; }
    void wrote(std::size_t samples) override;
    void drain();
};

} // namespace veslora
