// SPDX-License-Identifier: MIT
// Sounds on a machine that has no way to play them: none.
#pragma once

#include "VesloraUI/Platform/SoundPlaying.h"

namespace veslora {

class SilentSound final : public SoundPlaying {
  public:
    void play(const std::string&) override {}
};

} // namespace veslora
