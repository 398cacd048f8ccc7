// SPDX-License-Identifier: MIT
// The seams whose form depends on the window system. Main thread only.
#pragma once

#include "VesloraUI/Platform/HostApplications.h"
#include "VesloraUI/Platform/Panel.h"
#include "VesloraUI/Platform/Pointer.h"
#include "VesloraUI/Platform/Scheduler.h"
#include "VesloraUI/Platform/Screens.h"

namespace veslora {

class WindowSystem {
  public:
    virtual ~WindowSystem() = default;

    [[nodiscard]] virtual Screens& screens() = 0;
    [[nodiscard]] virtual Pointer& pointer() = 0;
    [[nodiscard]] virtual Panel& panel() = 0;
    [[nodiscard]] virtual HostApplications& hostApplications() = 0;
};

} // namespace veslora
