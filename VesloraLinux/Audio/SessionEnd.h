// SPDX-License-Identifier: MIT
// How a session with a sound server comes to its end.
#pragma once

namespace veslora {

enum class SessionEnd {
    finished, ///< as it was to
    failed,
    stopped, ///< by the descriptor
};

} // namespace veslora
