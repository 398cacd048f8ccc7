// SPDX-License-Identifier: MIT
// The updater of a build that has none.
#pragma once

#include "VesloraUI/Platform/Updating.h"

namespace veslora {

class NoOpUpdater final : public Updating {
  public:
    [[nodiscard]] bool canCheckForUpdates() const override { return false; }
    [[nodiscard]] bool automaticallyChecksForUpdates() const override { return m_isAutomatic; }
    void setAutomaticallyChecksForUpdates(bool isOn) override { m_isAutomatic = isOn; }
    [[nodiscard]] bool isAvailable() const override { return false; }
    void checkForUpdates() override {}

  private:
    bool m_isAutomatic = false;
};

} // namespace veslora
