// SPDX-License-Identifier: MIT
// One refresh of the monitor that finds 1,000 sessions and a full spool of 4,096 files for the first time,
// and one that finds nothing new, on real files and in this process.
#pragma once

#include <string>

namespace veslora::bench {

class Report;

/// Throws when the refresh did not take everything. `executables` is the folder of the program and its
/// helper. A short one takes fewer files, once.
void measureRefresh(Report& report, const std::string& executables, bool isShort);

} // namespace veslora::bench
