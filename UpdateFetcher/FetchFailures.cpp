// SPDX-License-Identifier: MIT
#include "UpdateFetcher/FetchFailures.h"

namespace veslora {

UpdateFailure updateFailureOf(FetchFailure failure) {
    switch (failure) {
    case FetchFailure::unreachable:
        return UpdateFailure::unreachable;
    case FetchFailure::slow:
        return UpdateFailure::slow;
    case FetchFailure::insecure:
        return UpdateFailure::insecure;
    case FetchFailure::missing:
        return UpdateFailure::missing;
    case FetchFailure::tooLarge:
        return UpdateFailure::tooLarge;
    case FetchFailure::incomplete:
        return UpdateFailure::incomplete;
    case FetchFailure::notKept:
        break;
    }
    return UpdateFailure::folder;
}

} // namespace veslora
