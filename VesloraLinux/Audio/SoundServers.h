// SPDX-License-Identifier: MIT
// The sound servers that there may be on a desktop.
#pragma once

#include "VesloraLinux/Audio/OpenServerOutput.h"

namespace veslora {

/// Those of the user's session, the preferred one first.
[[nodiscard]] OpenServerOutput::Servers soundServers();

} // namespace veslora
