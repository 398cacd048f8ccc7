// SPDX-License-Identifier: MIT
// One process that follows the transcripts of a folder with the program's own code and tells what that took.
#pragma once

#include <string>

namespace veslora::bench {

/// Reads today's transcripts below `projects`, refreshes, follows a line that it appends to `file` if that is
/// not empty, and prints a line of names and values. False if the first read does not end.
bool runUsage(const std::string& projects, const std::string& file);

} // namespace veslora::bench
