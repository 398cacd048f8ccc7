// SPDX-License-Identifier: MIT
// The seam for the short sounds by which the program calls for attention.
#pragma once

#include <string>

namespace veslora {

class SoundPlaying {
  public:
    virtual ~SoundPlaying() = default;

    /// Plays one of the named sounds, such as "Glass", once, beside whatever plays already. An unknown name,
    /// or a machine without sound, plays nothing.
    virtual void play(const std::string& name) = 0;
};

} // namespace veslora
