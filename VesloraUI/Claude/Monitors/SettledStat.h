// SPDX-License-Identifier: MIT
// Tells from a file's stat alone whether it has to be read again, for small files that are looked at every
// few seconds. Plain values; main thread only.
#pragma once

#include "VesloraUI/Platform/Files.h"

#include <optional>

namespace veslora {

class SettledStat {
  public:
    /// Seconds for which a file must have rested. Two writes within one tick of the file system's clock carry
    /// the same stamp; this is far longer than a tick.
    static constexpr double settlingTime = 1.0;

    /// To be called after the file was read, with the stat that it had before. A read that failed tells
    /// nothing, and is not to be remembered.
    void remember(const FileStat& stat, Timestamp now) {
        m_stat = now - stat.modified > settlingTime ? std::optional(stat) : std::nullopt;
    }

    /// The file is as it was when it was last read. False also where it was still too fresh then for its
    /// stamp to tell the next write apart, or bore a stamp of the future.
    [[nodiscard]] bool isSame(const FileStat& stat) const { return m_stat == stat; }

  private:
    std::optional<FileStat> m_stat; ///< absent while nothing can be told
};

} // namespace veslora
