// SPDX-License-Identifier: MIT
// The way to the system's own bus, where there is one.
#pragma once

#include "VesloraLinux/System/LinuxDirectories.h"

#include <QDBusConnection>

#include <optional>

namespace veslora::SystemBus {

/// Whether the environment names a bus, or one listens at its usual place.
[[nodiscard]] bool isNamed(const LinuxDirectories::Environment& environment);

/// The connection that all of the program shares; absent when there is no bus or it does not answer.
[[nodiscard]] std::optional<QDBusConnection> connection();

} // namespace veslora::SystemBus
