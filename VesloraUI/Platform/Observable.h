// SPDX-License-Identifier: MIT
// The one way in which an observable field is assigned.
#pragma once

#include <utility>

namespace veslora {

/// Stores `value` in `field` and emits `changed` of `owner`, but only when the value really differs. True
/// when it did.
template <class Owner, class Base, class Field, class Value>
bool assign(Owner* owner, Field& field, Value&& value, void (Base::*changed)()) {
    if (field == value) {
        return false;
    }
    field = std::forward<Value>(value);
    (owner->*changed)();
    return true;
}

} // namespace veslora
