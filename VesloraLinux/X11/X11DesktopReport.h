// SPDX-License-Identifier: MIT
// What a report of a fault says of an X desktop.
#pragma once

#include "VesloraCore/Island/BugReport.h"
#include "VesloraUI/Platform/Scheduler.h"

#include <optional>

namespace veslora::X11DesktopReport {

/// Needs an application object that runs on X. Absent when no second connection to the server can be had.
[[nodiscard]] std::optional<BugReport::Display> gather(Scheduler& scheduler);

} // namespace veslora::X11DesktopReport
