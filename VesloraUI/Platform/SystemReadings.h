// SPDX-License-Identifier: MIT
// The seam for the machine's own counters. Every operation looks again, and may fail for the moment. Main
// thread only.
#pragma once

#include "VesloraCore/System/MeterMath.h"

#include <cstdint>
#include <optional>

namespace veslora {

/// Of the volume that the system is on, in bytes.
struct DiskCapacity {
    std::uint64_t total = 0;
    std::uint64_t available = 0; ///< to our user
    bool operator==(const DiskCapacity&) const = default;
};

class SystemReadings {
  public:
    virtual ~SystemReadings() = default;

    /// Bytes of memory that the machine has.
    [[nodiscard]] virtual std::optional<std::uint64_t> physicalMemory() = 0;

    /// Of all processors together.
    [[nodiscard]] virtual std::optional<CPUTicks> ticks() = 0;

    [[nodiscard]] virtual std::optional<MemoryPages> memoryPages() = 0;

    /// Absent also on a machine without a battery.
    [[nodiscard]] virtual std::optional<BatteryReading> battery() = 0;

    [[nodiscard]] virtual std::optional<DiskCapacity> disk() = 0;
};

} // namespace veslora
