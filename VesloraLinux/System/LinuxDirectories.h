// SPDX-License-Identifier: MIT
// Where things lie on this machine, by the XDG rules and the agents' own variables.
#pragma once

#include "VesloraUI/Platform/Platform.h"

#include <functional>
#include <optional>

namespace veslora::LinuxDirectories {

/// The value of an environment variable; absent when it is unset.
using Environment = std::function<std::optional<std::string>(const std::string&)>;

/// Works the directories out; makes none of them. A variable that is empty or no absolute path counts as
/// unset, and so does an XDG_RUNTIME_DIR that is not there or not the user's own, as under `su`.
[[nodiscard]] Directories find(const Environment& environment);

/// The path of the file that runs as this process, without links. Where it has been replaced or removed, the
/// system says so at the end of it, so it is to be asked at the beginning.
[[nodiscard]] std::string executable();

/// The program's own environment.
[[nodiscard]] std::optional<std::string> processEnvironment(const std::string& name);

} // namespace veslora::LinuxDirectories
