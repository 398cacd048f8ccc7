// SPDX-License-Identifier: MIT
// What a file carries beside its bytes and its mode: the access list and the user's extended attributes.
#pragma once

#include <system_error>

namespace veslora::FileAttributes {

/// Gives them from one open file to another, which has its owner, group and mode already and then carries the
/// same and no others, so that nobody gains or loses a right. `FileRefusal::losesAttributes` where that can't
/// be.
[[nodiscard]] std::error_code copy(int from, int to);

} // namespace veslora::FileAttributes
