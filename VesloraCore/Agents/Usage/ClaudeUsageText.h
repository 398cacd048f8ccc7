// SPDX-License-Identifier: MIT
// How a count of tokens reads. Pure functions, any thread.
#pragma once

#include "VesloraCore/Text/Words.h"

#include <cstdint>
#include <string>

namespace veslora::ClaudeUsageText {

/// "999", "1K" to "999K", "1.23M", "12.3M": thousands are cut off, millions rounded. A negative count is
/// written out.
[[nodiscard]] std::string tokens(std::int64_t count, const Words& words = {});

} // namespace veslora::ClaudeUsageText
