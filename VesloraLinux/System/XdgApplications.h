// SPDX-License-Identifier: MIT
// Opens other applications by the desktop's own commands (xdg-utils), whichever way they were packaged. Main
// thread only.
#pragma once

#include "VesloraUI/Platform/AppOpening.h"

#include <QObject>

namespace veslora {

class XdgApplications final : public AppOpening {
  public:
    /// Knows Spotify alone, by the scheme of its addresses: whatever the desktop opens those with is it.
    void open(const std::string& bundleID) override;

  private:
    QObject m_running; ///< parent of the commands that run
};

} // namespace veslora
