// SPDX-License-Identifier: MIT
// For desktops that let no program see the windows of others.
#pragma once

#include "VesloraUI/Platform/ScreenWindows.h"

namespace veslora {

class NoScreenWindows final : public ScreenWindows {
  public:
    [[nodiscard]] std::vector<WindowFrame> windowsOn(const ScreenInfo& /*screen*/) override { return {}; }
    void setWatching(bool /*isWatching*/) override {}
};

} // namespace veslora
