// SPDX-License-Identifier: MIT
// The way to the session bus that never starts one: without a bus the program must come up just as fast.
#pragma once

#include "VesloraLinux/System/LinuxDirectories.h"

#include <QDBusConnection>

#include <optional>

namespace veslora::SessionBus {

/// Whether the environment names a bus, or one listens at its usual place in XDG_RUNTIME_DIR.
[[nodiscard]] bool isNamed(const LinuxDirectories::Environment& environment);

/// The connection that all of the program shares; absent when there is no bus or it does not answer.
[[nodiscard]] std::optional<QDBusConnection> connection();

/// Tells the log which bus there is, or why there is none.
void tell();

} // namespace veslora::SessionBus
