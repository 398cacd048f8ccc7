// SPDX-License-Identifier: MIT
// The seam for looking for newer versions of the program. Main thread only.
#pragma once

#include <functional>

namespace veslora {

class Updating {
  public:
    virtual ~Updating() = default;

    /// Whether a check may be started now, or what is under way unseen be looked at.
    [[nodiscard]] virtual bool canCheckForUpdates() const = 0;
    /// Whether checks are made in the background.
    [[nodiscard]] virtual bool automaticallyChecksForUpdates() const = 0;
    virtual void setAutomaticallyChecksForUpdates(bool isOn) = 0;
    /// Whether this build looks for updates at all; one of a distribution leaves them to its packages.
    [[nodiscard]] virtual bool isAvailable() const = 0;

    std::function<void(bool)> onCanCheckForUpdatesChange;
    std::function<void(bool)> onAutomaticallyChecksForUpdatesChange;

    /// Starts a check that the user has asked for, and shows what it finds; where something is under way,
    /// shows that and starts nothing.
    virtual void checkForUpdates() = 0;
};

} // namespace veslora
