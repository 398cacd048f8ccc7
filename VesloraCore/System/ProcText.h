// SPDX-License-Identifier: MIT
// Reads what the Linux kernel writes about the processor and the memory in /proc. Text of another form, cut
// off or with numbers beyond 64 bits gives nothing. Pure functions, any thread.
#pragma once

#include "VesloraCore/System/MeterMath.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace veslora::ProcText {

/// The counts of all processors together in the text of /proc/stat, which begins with them. Waiting for a
/// disk counts as idle; interrupts, and time that the machine's host took away, count as the system's. Time
/// of guests is in the kernel's counts of the user's and nice time already.
[[nodiscard]] std::optional<CPUTicks> cpuTicks(std::string_view stat);

/// The physical memory in bytes, of the text of /proc/meminfo.
[[nodiscard]] std::optional<std::uint64_t> memoryTotal(std::string_view meminfo);

/// What is in memory, of the text of /proc/meminfo, in its own unit of 1024 bytes:
///
/// - wired: kernel memory that can't be reclaimed (SUnreclaim, KernelStack, PageTables, Percpu), the pool of
///   huge pages (Hugetlb), and free memory that the kernel keeps to itself (MemFree less MemAvailable);
/// - compressed: the pool of compressed swap (Zswap);
/// - internal: all the rest of what is not free;
/// - purgeable: what the kernel would give back without swapping, nearly all of it the cache of files
///   (MemAvailable less MemFree).
///
/// So the memory in use comes out as MemTotal less MemAvailable, the "used" of free(1). A kernel that tells
/// no MemAvailable is taken to give back Buffers, Cached and SReclaimable, but not Shmem, which is counted
/// among the cached. Absent without MemTotal or MemFree.
[[nodiscard]] std::optional<MemoryPages> memoryPages(std::string_view meminfo);

} // namespace veslora::ProcText
