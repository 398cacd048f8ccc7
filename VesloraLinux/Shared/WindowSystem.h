// SPDX-License-Identifier: MIT
// The seams whose form depends on the window system. Main thread only.
#pragma once

#include "VesloraLinux/Shared/Inhibitor.h"
#include "VesloraUI/Platform/FrameClock.h"
#include "VesloraUI/Platform/HostApplications.h"
#include "VesloraUI/Platform/Panel.h"
#include "VesloraUI/Platform/Pointer.h"
#include "VesloraUI/Platform/Scheduler.h"
#include "VesloraUI/Platform/ScreenWindows.h"
#include "VesloraUI/Platform/Screens.h"
#include "VesloraUI/Platform/ScrollDevices.h"

#include <memory>

namespace veslora {

class WindowSystem {
  public:
    virtual ~WindowSystem() = default;

    [[nodiscard]] virtual Screens& screens() = 0;
    [[nodiscard]] virtual ScreenWindows& screenWindows() = 0;
    [[nodiscard]] virtual Pointer& pointer() = 0;
    [[nodiscard]] virtual ScrollDevices& scrollDevices() = 0;
    [[nodiscard]] virtual Panel& panel() = 0;
    [[nodiscard]] virtual FrameClock& frameClock() = 0;
    [[nodiscard]] virtual HostApplications& hostApplications() = 0;

    /// The window system's own way of keeping the display on, which must go before it does; null where it has
    /// none.
    [[nodiscard]] virtual std::unique_ptr<Inhibitor> makeDisplayInhibitor() = 0;
};

} // namespace veslora
