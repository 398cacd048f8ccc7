// SPDX-License-Identifier: MIT
#include "VesloraCore/Widgets/FingerSwipe.h"

#include <algorithm>
#include <cmath>

namespace veslora {

int FingerSwipe::moveTo(double x, double y) {
    if (m_way == Way::undecided && std::max(std::abs(x), std::abs(y)) > slop) {
        m_way = std::abs(x) > std::abs(y) ? Way::sideways : Way::other;
    }
    if (!isSideways() || m_hasTurned || !(std::abs(x) >= distance)) {
        return 0;
    }
    m_hasTurned = true;
    return x < 0 ? 1 : -1;
}

} // namespace veslora
