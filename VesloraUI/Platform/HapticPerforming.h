// SPDX-License-Identifier: MIT
// The seam for a short tap under the user's finger, on machines that have such a thing.
#pragma once

namespace veslora {

enum class HapticPattern { generic, alignment };

class HapticPerforming {
  public:
    virtual ~HapticPerforming() = default;
    virtual void perform(HapticPattern pattern) = 0;
};

} // namespace veslora
