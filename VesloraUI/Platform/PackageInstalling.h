// SPDX-License-Identifier: MIT
// The seam that hands a package to the system's installer. Main thread only.
#pragma once

#include "VesloraUI/Platform/Task.h"

#include <cstdint>
#include <functional>
#include <string>

namespace veslora {

enum class InstallOutcome : std::uint8_t {
    installed,
    cancelled, ///< by the user, as where the system asks for a password
    forbidden, ///< the user may not install packages
    busy,      ///< another installation is under way
    failed,    ///< for any other reason: the system is as it was, as far as it says
    absent,    ///< this system has no such installer
};

class PackageInstalling {
  public:
    virtual ~PackageInstalling() = default;

    /// Asks the system to install the package at that absolute path; the system itself asks the user for what
    /// it needs. `done` is called once, later and never within this call, however long the user takes.
    /// Cancelling drops `done`; what was begun goes on.
    [[nodiscard]] virtual Task install(const std::string& path, std::function<void(InstallOutcome)> done) = 0;
};

} // namespace veslora
