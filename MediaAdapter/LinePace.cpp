// SPDX-License-Identifier: MIT
#include "MediaAdapter/LinePace.h"

#include <algorithm>

namespace veslora {

void LinePace::written(Milliseconds now) {
    m_changedAt.reset();
    m_writtenAt = now;
}

std::optional<LinePace::Milliseconds> LinePace::due(bool isPositionAwaited) const {
    if (!m_changedAt) {
        return std::nullopt;
    }
    const Milliseconds ready = *m_changedAt + (isPositionAwaited ? patience : 0);
    return m_writtenAt ? std::max(ready, *m_writtenAt + interval) : ready;
}

} // namespace veslora
