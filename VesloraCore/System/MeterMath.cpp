// SPDX-License-Identifier: MIT
#include "VesloraCore/System/MeterMath.h"

#include <cmath>

namespace veslora::MeterMath {

namespace {

constexpr auto calculating = "CALCULATING…";

double difference(std::uint64_t previous, std::uint64_t current) {
    return static_cast<double>(current - previous);
}

bool wentBackwards(const CPUTicks& previous, const CPUTicks& current) {
    return current.user < previous.user || current.system < previous.system || current.idle < previous.idle ||
           current.nice < previous.nice;
}

/// "1:35" for 95 minutes; absent for a negative time, which is none.
std::optional<std::string> clockText(std::optional<int> minutes) {
    if (!minutes || *minutes < 0) {
        return std::nullopt;
    }
    const int rest = *minutes % 60;
    return std::to_string(*minutes / 60) + (rest < 10 ? ":0" : ":") + std::to_string(rest);
}

} // namespace

std::optional<CPUUsage> cpuUsage(const CPUTicks& previous, const CPUTicks& current) {
    if (wentBackwards(previous, current)) {
        return std::nullopt;
    }
    const double user = difference(previous.user, current.user) + difference(previous.nice, current.nice);
    const double system = difference(previous.system, current.system);
    const double whole = user + system + difference(previous.idle, current.idle);
    return whole > 0 ? std::optional(CPUUsage{user / whole, system / whole}) : std::nullopt;
}

std::optional<std::uint64_t> memoryUsedBytes(std::uint64_t internalPages, std::uint64_t purgeablePages,
                                             std::uint64_t wiredPages, std::uint64_t compressedPages,
                                             std::uint64_t pageSize) {
    std::uint64_t bytes = internalPages > purgeablePages ? internalPages - purgeablePages : 0;
    const bool overflows = __builtin_add_overflow(bytes, wiredPages, &bytes) ||
                           __builtin_add_overflow(bytes, compressedPages, &bytes) ||
                           __builtin_mul_overflow(bytes, pageSize, &bytes);
    return overflows ? std::nullopt : std::optional(bytes);
}

std::string memoryGigabytes(std::uint64_t bytes) {
    constexpr double gibibyte = 1024.0 * 1024 * 1024;
    const long long tenths = std::llround(static_cast<double>(bytes) / gibibyte * 10);
    const std::string whole = std::to_string(tenths / 10);
    return tenths % 10 == 0 ? whole : whole + "." + std::to_string(tenths % 10);
}

std::string diskGigabytes(std::uint64_t bytes) {
    constexpr double gigabyte = 1e9;
    return std::to_string(std::llround(static_cast<double>(bytes) / gigabyte));
}

std::string percent(std::optional<double> share) {
    constexpr double beyondReason = 10;
    // Written so that a value that is no number fails the test too.
    const bool isShare = share && *share >= 0 && *share < beyondReason;
    return isShare ? std::to_string(std::lround(*share * 100)) + "%" : "--";
}

std::string cpuDetail(const std::optional<CPUUsage>& usage) {
    const auto user = usage ? std::optional(usage->user) : std::nullopt;
    const auto system = usage ? std::optional(usage->system) : std::nullopt;
    return "USER " + percent(user) + " · SYS " + percent(system);
}

std::string batteryDetail(const BatteryReading& reading) {
    if (reading.isCharging) {
        const auto time = clockText(reading.minutesToFull);
        return time ? "CHARGING · " + *time + " TO FULL" : calculating;
    }
    if (reading.onAC) {
        return "ON POWER";
    }
    const auto time = clockText(reading.minutesToEmpty);
    return time ? *time + " LEFT" : calculating;
}

std::optional<double> fraction(std::uint64_t part, std::uint64_t whole) {
    return whole == 0 ? std::nullopt : std::optional(static_cast<double>(part) / static_cast<double>(whole));
}

MeterKind secondReading(const std::optional<BatteryReading>& battery) {
    return battery ? MeterKind::battery : MeterKind::disk;
}

bool isUrgent(const MeterReading& reading) {
    constexpr double almostAll = 0.9;
    constexpr double almostNone = 0.1;
    if (!reading.fraction) {
        return false;
    }
    switch (reading.kind) {
    case MeterKind::cpu:
    case MeterKind::memory:
        return *reading.fraction > almostAll;
    case MeterKind::battery:
        return *reading.fraction < almostNone && !reading.isCharging;
    case MeterKind::disk:
        return false;
    }
    return false;
}

} // namespace veslora::MeterMath
