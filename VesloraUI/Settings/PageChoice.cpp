// SPDX-License-Identifier: MIT
#include "VesloraUI/Settings/PageChoice.h"

#include "VesloraUI/Platform/Observable.h"

namespace veslora {

void PageChoice::choose(int page) {
    if (page >= 0 && page < m_count) {
        assign(this, m_current, page, &PageChoice::currentChanged);
    }
}

void PageChoice::step(int pages) {
    if (m_count > 0) {
        choose(((m_current + pages) % m_count + m_count) % m_count);
    }
}

} // namespace veslora
