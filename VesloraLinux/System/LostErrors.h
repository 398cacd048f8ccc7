// SPDX-License-Identifier: MIT
// Failures whose reason has no room in what the seam for files answers, such as "absent": the log tells of
// each file once, until it works again. What is simply not there is no failure. Any thread.
#pragma once

namespace veslora::LostErrors {

/// Tells that `operation` failed as errno says, on `name` in `folder`, or on the path `name` where `folder`
/// is AT_FDCWD; on `folder` itself where `name` is empty.
void tell(const char* operation, int folder, const char* name);

/// It works, maybe again.
void forget(const char* operation, int folder, const char* name);

} // namespace veslora::LostErrors
