// SPDX-License-Identifier: MIT
// The seam for keeping the machine from idling to sleep. Main thread only.
#pragma once

#include "VesloraCore/KeepAwake/KeepAwakeState.h"

#include <optional>

namespace veslora {

class PowerAsserting {
  public:
    virtual ~PowerAsserting() = default;

    /// Holds that in place of what was held before; absent lets everything go. Returns at once, whatever the
    /// desktop takes to do it. Where it refuses nothing is held, without a word, until the next call. What is
    /// held goes with the program, however that ends.
    virtual void apply(const std::optional<KeepAwakeHold>& hold) = 0;
};

} // namespace veslora
