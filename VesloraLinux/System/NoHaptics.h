// SPDX-License-Identifier: MIT
// Linux knows no taps of a touchpad: every one is left out.
#pragma once

#include "VesloraUI/Platform/HapticPerforming.h"

namespace veslora {

class NoHaptics final : public HapticPerforming {
  public:
    void perform(HapticPattern) override {}
};

} // namespace veslora
