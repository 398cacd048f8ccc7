// SPDX-License-Identifier: MIT
#include "VesloraUI/Music/CoverCache.h"

#include <algorithm>

namespace veslora {

const QImage* CoverCache::find(std::string_view trackID) const {
    const auto found = std::ranges::find(m_entries, trackID, &Entry::trackID);
    return found == m_entries.end() ? nullptr : &found->cover;
}

void CoverCache::store(const std::string& trackID, const QImage& cover) {
    std::erase_if(m_entries, [&trackID](const Entry& entry) { return entry.trackID == trackID; });
    m_entries.push_back({trackID, cover});
    if (m_entries.size() > capacity) {
        m_entries.erase(m_entries.begin());
    }
}

} // namespace veslora
