// SPDX-License-Identifier: MIT
// Dates as texts, as the user's own clock and locale write them.
#pragma once

#include "VesloraCore/Timestamp.h"

#include <QString>

namespace veslora {

/// The time of day in its short form, such as "15:29" or "3:29 PM". A date that no calendar shows is held to
/// one that does.
[[nodiscard]] QString shortTime(Timestamp time);

} // namespace veslora
