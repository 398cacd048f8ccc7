// SPDX-License-Identifier: MIT
// Ownership of what xcb allocates.
#pragma once

#include <cstdlib>
#include <memory>

namespace veslora {

struct FreeReply {
    void operator()(void* reply) const { std::free(reply); }
};

/// A reply, an event or an error of xcb's; null when the request failed.
template <typename Type>
using X11Reply = std::unique_ptr<Type, FreeReply>;

} // namespace veslora
