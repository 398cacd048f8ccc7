// SPDX-License-Identifier: MIT
// Opens other applications by the desktop's own commands (xdg-utils), whichever way they were packaged. Main
// thread only.
#pragma once

#include "VesloraLinux/System/ChildProcesses.h"
#include "VesloraUI/Platform/AppOpening.h"

namespace veslora {

class XdgApplications final : public AppOpening {
  public:
    /// Knows Spotify alone, by the scheme of its addresses: whatever the desktop opens those with is it.
    void open(const std::string& bundleID) override;

  private:
    ChildProcesses m_running;
};

} // namespace veslora
