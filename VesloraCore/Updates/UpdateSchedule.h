// SPDX-License-Identifier: MIT
// When the program looks for updates by itself. Pure functions, any thread.
#pragma once

#include "VesloraCore/Timestamp.h"

namespace veslora::UpdateSchedule {

/// Between two looks, in seconds. While the program runs they are counted by a clock that nobody can set.
inline constexpr double period = 86'400;
/// After the start, in seconds: until then the network, and a clock that the network sets, may be missing.
inline constexpr double settling = 120;
/// After a look that reached no server at all.
inline constexpr double retry = 3'600;

/// Seconds until the next look, 0 to `period`, for one that was last made at `last` by the wall clock of an
/// earlier run; 0 or less for never. Of a look in the future nobody can say when it was, as the clock was set
/// back since: the next is due a period from now, and the record is to be replaced by `now`.
[[nodiscard]] double waitFor(Timestamp last, Timestamp now);

/// Whether a record of a look that is told so can't be true at `now`.
[[nodiscard]] bool isFromFuture(Timestamp last, Timestamp now);

/// Whether an offer that the user was shown at `shown` may be shown again without being asked for: not
/// within the same `period`. One from the future may not either, but its record is to be replaced.
[[nodiscard]] bool mayShowAgain(Timestamp shown, Timestamp now);

} // namespace veslora::UpdateSchedule
