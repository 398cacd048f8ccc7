// SPDX-License-Identifier: MIT
#include "MediaAdapter/LinePace.h"

#include <algorithm>

namespace veslora {

void LinePace::written(Milliseconds now) {
    m_changedAt.reset();
    m_writtenAt = now;
}

LinePace::Milliseconds LinePace::patienceFor(Awaited awaited) {
    if (awaited == Awaited::nothing) {
        return 0;
    }
    return awaited == Awaited::position ? positionPatience : trackPatience;
}

std::optional<LinePace::Milliseconds> LinePace::due(Awaited awaited) const {
    if (!m_changedAt) {
        return std::nullopt;
    }
    const Milliseconds ready = *m_changedAt + patienceFor(awaited);
    return m_writtenAt ? std::max(ready, *m_writtenAt + interval) : ready;
}

} // namespace veslora
