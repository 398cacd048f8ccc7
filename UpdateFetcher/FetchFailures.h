// SPDX-License-Identifier: MIT
// What a fetch that failed is to an update.
#pragma once

#include "VesloraCore/Updates/UpdateFailure.h"
#include "Web/FetchFailure.h"

namespace veslora {

/// What can't be kept of a fetch is what its folder did not take.
[[nodiscard]] UpdateFailure updateFailureOf(FetchFailure failure);

} // namespace veslora
