// SPDX-License-Identifier: MIT
#include "bench/inside/HeardPosition.h"

#include "bench/Report.h"

namespace veslora::bench {

HeardError heardError(const std::vector<Claim>& claims, const Recording& recording, const BeatPlan& plan) {
    const HearingClock clock(recording.arrivals);
    const std::int64_t shift = onsetsIn(recording.samples).front() - plan.timeOf(0);
    std::vector<double> errors;
    errors.reserve(claims.size());
    for (const Claim& claim : claims) {
        errors.push_back((claim.time - clock.timeOf(claim.sample + shift)) * 1000);
    }
    return {.offset = median(errors),
            .spread = percentile(errors, 0.99) - percentile(errors, 0.01),
            .range = percentile(errors, 1) - percentile(errors, 0)};
}

} // namespace veslora::bench
