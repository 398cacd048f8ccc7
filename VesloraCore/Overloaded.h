// SPDX-License-Identifier: MIT
// Makes one visitor of several lambdas, one for each case of a variant. Any thread.
#pragma once

namespace veslora {

template <class... Cases>
struct Overloaded : Cases... {
    using Cases::operator()...;
};
template <class... Cases>
Overloaded(Cases...) -> Overloaded<Cases...>; // clang 14 does not deduce it by itself

} // namespace veslora
