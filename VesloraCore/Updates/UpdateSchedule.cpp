// SPDX-License-Identifier: MIT
#include "VesloraCore/Updates/UpdateSchedule.h"

#include <algorithm>
#include <cmath>

namespace veslora::UpdateSchedule {

double waitFor(Timestamp last, Timestamp now) {
    if (!std::isfinite(last) || last <= 0) {
        return 0;
    }
    return isFromFuture(last, now) ? period : std::clamp(last + period - now, 0.0, period);
}

bool isFromFuture(Timestamp last, Timestamp now) {
    return std::isfinite(last) && last > now;
}

bool mayShowAgain(Timestamp shown, Timestamp now) {
    return waitFor(shown, now) <= 0;
}

} // namespace veslora::UpdateSchedule
