// SPDX-License-Identifier: MIT
// Why a fetch brought nothing.
#pragma once

#include <cstdint>

namespace veslora {

enum class FetchFailure : std::uint8_t {
    unreachable, ///< no network, no such server, or it refuses connections
    slow,        ///< all of it, or the next byte, took too long
    insecure,    ///< no safe connection, or an address or a redirect that is not https
    missing,     ///< the server has no such file, or no answer to give
    tooLarge,    ///< more bytes than are taken
    incomplete,  ///< fewer bytes than were announced
    notKept,     ///< the caller could not keep what came
};

} // namespace veslora
