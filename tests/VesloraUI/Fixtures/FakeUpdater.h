// SPDX-License-Identifier: MIT
// An updater that finds nothing and remembers what it was asked.
#pragma once

#include "VesloraUI/Platform/Updating.h"

namespace veslora {

class FakeUpdater final : public Updating {
  public:
    bool isThere = true;
    bool canCheck = true;
    bool isAutomatic = false;
    int writes = 0; ///< of whether it checks by itself
    int checks = 0;

    [[nodiscard]] bool canCheckForUpdates() const override { return canCheck; }
    [[nodiscard]] bool automaticallyChecksForUpdates() const override { return isAutomatic; }
    void setAutomaticallyChecksForUpdates(bool isOn) override {
        ++writes;
        isAutomatic = isOn;
        if (onAutomaticallyChecksForUpdatesChange) {
            onAutomaticallyChecksForUpdatesChange(isOn);
        }
    }
    [[nodiscard]] bool isAvailable() const override { return isThere; }
    void checkForUpdates() override { ++checks; }

    void setCanCheck(bool isPossible) {
        canCheck = isPossible;
        if (onCanCheckForUpdatesChange) {
            onCanCheckForUpdatesChange(isPossible);
        }
    }
};

} // namespace veslora
