// SPDX-License-Identifier: MIT
// Files that go when the program ends by `exit`. What is done then needs no memory, no lock and nothing that
// may be destroyed already. Any thread.
#pragma once

#include "VesloraUI/Platform/Files.h"

#include <memory>
#include <string>

namespace veslora::ExitRemovals {

/// Null where no place is left, which is there for a handful, or the name is too long.
[[nodiscard]] std::unique_ptr<RemovalAtExit> add(int folder, const std::string& name);

} // namespace veslora::ExitRemovals
