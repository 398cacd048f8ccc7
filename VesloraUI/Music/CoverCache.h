// SPDX-License-Identifier: MIT
// The covers that were loaded last, by their track. Main thread only.
#pragma once

#include <QImage>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace veslora {

class CoverCache {
  public:
    static constexpr std::size_t capacity = 20;

    /// Null where the track's cover is not held. Looking does not make a cover younger.
    [[nodiscard]] const QImage* find(std::string_view trackID) const;

    /// Holds the cover as the youngest; beyond the capacity the oldest goes.
    void store(const std::string& trackID, const QImage& cover);

    [[nodiscard]] std::size_t size() const { return m_entries.size(); }

  private:
    struct Entry {
        std::string trackID;
        QImage cover;
    };
    std::vector<Entry> m_entries; ///< oldest first
};

} // namespace veslora
