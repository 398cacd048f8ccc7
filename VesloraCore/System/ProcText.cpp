// SPDX-License-Identifier: MIT
#include "VesloraCore/System/ProcText.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace veslora::ProcText {

namespace {

/// Takes the number at the start of `text`, after blanks, out of it.
std::optional<std::uint64_t> takeNumber(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    std::uint64_t number = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
    const auto length = static_cast<std::size_t>(read.ptr - text.data());
    const bool endsThere = length == text.size() || text[length] == ' ';
    if (read.ec != std::errc() || !endsThere) {
        return std::nullopt;
    }
    text.remove_prefix(length);
    return number;
}

/// What follows `start` on the first line that begins so; absent when the line has no end.
std::optional<std::string_view> restOfLine(std::string_view text, std::string_view start) {
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        if (end == std::string_view::npos) {
            return std::nullopt;
        }
        if (text.starts_with(start)) {
            return text.substr(start.size(), end - start.size());
        }
        text.remove_prefix(end + 1);
    }
    return std::nullopt;
}

/// The figure of a line such as "MemTotal:       24684084 kB", in that unit.
std::optional<std::uint64_t> kibibytes(std::string_view meminfo, std::string_view name) {
    auto rest = restOfLine(meminfo, name);
    const auto number = rest ? takeNumber(*rest) : std::nullopt;
    return number && *rest == " kB" ? number : std::nullopt;
}

/// The sum of those lines that are there, held to 64 bits.
std::uint64_t sumOf(std::string_view meminfo, std::initializer_list<std::string_view> names) {
    std::uint64_t sum = 0;
    for (const std::string_view name : names) {
        if (__builtin_add_overflow(sum, kibibytes(meminfo, name).value_or(0), &sum)) {
            return UINT64_MAX;
        }
    }
    return sum;
}

std::uint64_t less(std::uint64_t from, std::uint64_t what) {
    return from > what ? from - what : 0;
}

/// Free memory and what could be given back without swapping, less what the kernel keeps to itself. More than
/// there is at all is no figure: some containers show their host's.
std::optional<std::uint64_t> availableOf(std::string_view meminfo, std::uint64_t total) {
    const auto told = kibibytes(meminfo, "MemAvailable:");
    return told && *told <= total ? told : std::nullopt;
}

} // namespace

std::optional<CPUTicks> cpuTicks(std::string_view stat) {
    // In the kernel's order; the last three, and the guests' after them, came with later kernels.
    enum Field { user, nice, system, idle, waiting, interrupts, softInterrupts, stolen, fieldCount };
    auto rest = stat.starts_with("cpu ") ? restOfLine(stat, "cpu ") : std::nullopt;
    if (!rest) {
        return std::nullopt;
    }
    std::array<std::uint64_t, fieldCount> fields{};
    for (std::size_t i = 0; i < fields.size() && (i <= idle || !rest->empty()); ++i) {
        const auto number = takeNumber(*rest);
        if (!number) {
            return std::nullopt;
        }
        fields[i] = *number;
    }
    CPUTicks ticks{fields[user], fields[system], fields[idle], fields[nice]};
    const bool overflows = __builtin_add_overflow(ticks.idle, fields[waiting], &ticks.idle) ||
                           __builtin_add_overflow(ticks.system, fields[interrupts], &ticks.system) ||
                           __builtin_add_overflow(ticks.system, fields[softInterrupts], &ticks.system) ||
                           __builtin_add_overflow(ticks.system, fields[stolen], &ticks.system);
    return overflows ? std::nullopt : std::optional(ticks);
}

std::optional<std::uint64_t> memoryTotal(std::string_view meminfo) {
    std::uint64_t bytes = 0;
    const auto total = kibibytes(meminfo, "MemTotal:");
    const bool isUsable = total && !__builtin_mul_overflow(*total, std::uint64_t{1024}, &bytes);
    return isUsable ? std::optional(bytes) : std::nullopt;
}

std::optional<MemoryPages> memoryPages(std::string_view meminfo) {
    const auto total = kibibytes(meminfo, "MemTotal:");
    const auto free = kibibytes(meminfo, "MemFree:");
    if (!total || !free || *free > *total) {
        return std::nullopt;
    }
    const auto available = availableOf(meminfo, *total);
    const std::uint64_t reserve = available ? less(*free, *available) : 0;
    const std::uint64_t taken = *total - *free + reserve;
    MemoryPages pages;
    // Held to what is taken at all: the lines are not all counted at the same moment.
    const std::uint64_t kernels =
        sumOf(meminfo, {"SUnreclaim:", "KernelStack:", "PageTables:", "Percpu:", "Hugetlb:"});
    pages.wiredPages = reserve + std::min(taken - reserve, kernels);
    pages.compressedPages = std::min(taken - pages.wiredPages, sumOf(meminfo, {"Zswap:"}));
    pages.internalPages = taken - pages.wiredPages - pages.compressedPages;
    pages.purgeablePages = available ? less(*available, *free)
                                     : less(sumOf(meminfo, {"Buffers:", "Cached:", "SReclaimable:"}),
                                            sumOf(meminfo, {"Shmem:"}));
    pages.pageSize = 1024;
    return pages;
}

} // namespace veslora::ProcText
