// SPDX-License-Identifier: MIT
// The machine's counters from /proc and /sys, and its disk by statvfs. Keeps nothing between two looks but
// what it could not read, which the log is told of once.
#pragma once

#include "VesloraUI/Platform/SystemReadings.h"
#include "VesloraUI/Platform/Trouble.h"

#include <string>

namespace veslora {

class ProcSystemReadings final : public SystemReadings {
  public:
    /// `root` is the folder that holds "proc" and "sys", without a slash at its end: empty for the machine's
    /// own. Tests lay out another one.
    explicit ProcSystemReadings(std::string root = {});

    [[nodiscard]] std::optional<std::uint64_t> physicalMemory() override;
    [[nodiscard]] std::optional<CPUTicks> ticks() override;
    [[nodiscard]] std::optional<MemoryPages> memoryPages() override;
    [[nodiscard]] std::optional<BatteryReading> battery() override;
    [[nodiscard]] std::optional<DiskCapacity> disk() override;

  private:
    [[nodiscard]] std::string meminfo() const;

    template <class Value>
    std::optional<Value> told(const std::string& path, std::optional<Value> value);

    std::string m_root;
    Troubles m_troubles;
};

} // namespace veslora
