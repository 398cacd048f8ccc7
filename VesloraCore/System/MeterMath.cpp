// SPDX-License-Identifier: MIT
#include "VesloraCore/System/MeterMath.h"

#include <cmath>

namespace veslora::MeterMath {

namespace {

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

std::string memoryGigabytes(std::uint64_t bytes, const Words& words) {
    constexpr double gibibyte = 1024.0 * 1024 * 1024;
    const long long tenths = std::llround(static_cast<double>(bytes) / gibibyte * 10);
    const std::string whole = std::to_string(tenths / 10);
    return tenths % 10 == 0 ? whole : whole + words.decimalPoint() + std::to_string(tenths % 10);
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

std::string cpuDetail(const std::optional<CPUUsage>& usage, const Words& words) {
    const auto user = usage ? std::optional(usage->user) : std::nullopt;
    const auto system = usage ? std::optional(usage->system) : std::nullopt;
    return Words::filled(words.translate("Meters", "USER %1 · SYS %2"), {percent(user), percent(system)});
}

std::string batteryDetail(const BatteryReading& reading, const Words& words) {
    const auto withTime = [&words](const std::string& pattern, const std::optional<std::string>& time) {
        return time ? Words::filled(pattern, {*time}) : words.translate("Meters", "CALCULATING…");
    };
    if (reading.isCharging) {
        return withTime(words.translate("Meters", "CHARGING · %1 TO FULL"), clockText(reading.minutesToFull));
    }
    if (reading.onAC) {
        return words.translate("Meters", "ON POWER");
    }
    return withTime(words.translate("Meters", "%1 LEFT"), clockText(reading.minutesToEmpty));
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
