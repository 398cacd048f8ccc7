// SPDX-License-Identifier: MIT
// Ends media adapters that outlived the program. The kernel asks each to end when its program dies; one that
// was stopped at that moment, or that hangs, is still there.
#pragma once

#include "VesloraLinux/System/ProcProcesses.h"

#include <cstdint>
#include <string>
#include <vector>

namespace veslora::OrphanSweep {

/// Ends those of the executable `adapter`, an absolute path, at once; tells their ids. Others of the same
/// name, and those whose program runs, are left alone. Looks at every process of the machine: for a
/// background thread.
[[nodiscard]] std::vector<std::int32_t> endOrphans(const ProcProcesses& processes,
                                                   const std::string& adapter);

} // namespace veslora::OrphanSweep
