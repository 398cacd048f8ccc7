// SPDX-License-Identifier: MIT
// The arithmetic and the texts of the system's meters: processor, memory, battery and disk. Pure functions,
// any thread.
#pragma once

#include "VesloraCore/Text/Words.h"

#include <cstdint>
#include <optional>
#include <string>

namespace veslora {

/// Ticks that the kernel has counted since boot; no tick is in two of them.
struct CPUTicks {
    std::uint64_t user = 0;
    std::uint64_t system = 0;
    std::uint64_t idle = 0;
    std::uint64_t nice = 0;
    bool operator==(const CPUTicks&) const = default;
};

/// Shares of the time between two counts, 0 to 1.
struct CPUUsage {
    double user = 0;
    double system = 0;
    [[nodiscard]] double total() const { return user + system; }
    bool operator==(const CPUUsage&) const = default;
};

/// What is in memory, in pages of `pageSize` bytes.
struct MemoryPages {
    std::uint64_t internalPages = 0;  ///< in use, and neither wired nor compressed
    std::uint64_t purgeablePages = 0; ///< of the internal ones those that can be given up at once
    std::uint64_t wiredPages = 0;     ///< the kernel's own, never given up
    std::uint64_t compressedPages = 0;
    std::uint64_t pageSize = 0;
    bool operator==(const MemoryPages&) const = default;
};

/// All batteries of the machine taken together.
struct BatteryReading {
    double percent = 0; ///< a share, despite its name: 1 is full, and a battery may say a little more
    bool isCharging = false;
    bool onAC = false;
    std::optional<int> minutesToFull;  ///< absent while it can't be told
    std::optional<int> minutesToEmpty; ///< absent while it can't be told
    bool operator==(const BatteryReading&) const = default;
};

enum class MeterKind { cpu, memory, battery, disk };

/// What one meter shows.
struct MeterReading {
    MeterKind kind = MeterKind::cpu;
    std::optional<double> fraction; ///< 0 to 1; absent while no figure is known
    bool isCharging = false;        ///< of a battery
    bool operator==(const MeterReading&) const = default;
};

namespace MeterMath {

/// How busy the processor was between two counts. Absent when a counter went backwards, as after a reset, and
/// when no tick lies between them.
[[nodiscard]] std::optional<CPUUsage> cpuUsage(const CPUTicks& previous, const CPUTicks& current);

/// Bytes of memory that are taken: the internal pages that can't be given up, the wired and the compressed.
/// Absent beyond 64 bits.
[[nodiscard]] std::optional<std::uint64_t>
memoryUsedBytes(std::uint64_t internalPages, std::uint64_t purgeablePages, std::uint64_t wiredPages,
                std::uint64_t compressedPages, std::uint64_t pageSize);

/// Binary units, to one decimal place where there is one: "7.5", "8".
[[nodiscard]] std::string memoryGigabytes(std::uint64_t bytes, const Words& words = {});

/// Decimal units, whole: "494".
[[nodiscard]] std::string diskGigabytes(std::uint64_t bytes);

/// "23%" for 0.23, or "--" without a figure. What is no share of anything, below 0, beyond tenfold or no
/// number, counts as none.
[[nodiscard]] std::string percent(std::optional<double> share);

/// "USER 15% · SYS 8%".
[[nodiscard]] std::string cpuDetail(const std::optional<CPUUsage>& usage, const Words& words = {});

/// "CHARGING · 1:35 TO FULL", "ON POWER", "4:12 LEFT", or "CALCULATING…" while a time is not known.
[[nodiscard]] std::string batteryDetail(const BatteryReading& reading, const Words& words = {});

/// `part` of `whole`; absent for a whole of 0.
[[nodiscard]] std::optional<double> fraction(std::uint64_t part, std::uint64_t whole);

/// What the last meter shows: the battery on a machine that has one, the disk on any other.
[[nodiscard]] MeterKind secondReading(const std::optional<BatteryReading>& battery);

/// Whether the reading calls for attention: processor or memory above nine tenths, a battery below a tenth
/// that is not being charged. A disk never does, nor does a meter without a figure.
[[nodiscard]] bool isUrgent(const MeterReading& reading);

} // namespace MeterMath

} // namespace veslora
