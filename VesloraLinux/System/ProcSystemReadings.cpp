// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/ProcSystemReadings.h"

#include "VesloraCore/System/PowerSupply.h"
#include "VesloraCore/System/ProcText.h"
#include "VesloraLinux/System/FileBeginning.h"
#include "VesloraLinux/System/PosixReading.h"
#include "VesloraUI/Platform/Logs.h"

#include <dirent.h>
#include <sys/statvfs.h>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <span>
#include <vector>

namespace veslora {

namespace {

constexpr const char* memoryFile = "/proc/meminfo";

/// The names in a folder, sorted; empty when it can't be listed.
std::vector<std::string> namesIn(const std::string& folder) {
    // No machine has so many supplies.
    constexpr std::size_t most = 64;
    const auto close = [](DIR* directory) { closedir(directory); };
    const std::unique_ptr<DIR, decltype(close)> directory(opendir(folder.c_str()), close);
    std::vector<std::string> names;
    while (const dirent* entry = directory && names.size() < most ? readdir(directory.get()) : nullptr) {
        if (entry->d_name[0] != '.') {
            names.emplace_back(entry->d_name);
        }
    }
    std::ranges::sort(names);
    return names;
}

void readInto(PowerSupply::Attributes& supply, const std::string& folder,
              std::span<const std::string_view> names) {
    // The kernel's limit on the text of an attribute.
    constexpr std::size_t cap = 4096;
    for (const std::string_view name : names) {
        std::string text = fileBeginning(folder + "/" + std::string(name), cap);
        if (!text.empty()) {
            supply.emplace(name, std::move(text));
        }
    }
}

PowerSupply::Attributes supplyAt(const std::string& folder) {
    PowerSupply::Attributes supply;
    readInto(supply, folder, PowerSupply::attributeNames);
    if (PowerSupply::isBattery(supply)) {
        readInto(supply, folder, PowerSupply::batteryAttributeNames);
    }
    return supply;
}

} // namespace

ProcSystemReadings::ProcSystemReadings(std::string root) : m_root(std::move(root)) {}

template <class Value>
std::optional<Value> ProcSystemReadings::told(const std::string& path, std::optional<Value> value) {
    const std::error_code reason =
        errno != 0 ? PosixReading::lastError() : std::make_error_code(std::errc::bad_message);
    const std::error_code error = value ? std::error_code() : reason;
    if (m_troubles.begins(path, error)) {
        qCWarning(Logs::system, "no figure from %s: %s", path.c_str(), error.message().c_str());
    }
    return value;
}

std::string ProcSystemReadings::meminfo() const {
    constexpr std::size_t cap = std::size_t{64} << 10;
    return fileBeginning(m_root + memoryFile, cap);
}

std::optional<std::uint64_t> ProcSystemReadings::physicalMemory() {
    return told(m_root + memoryFile, ProcText::memoryTotal(meminfo()));
}

std::optional<CPUTicks> ProcSystemReadings::ticks() {
    // The sums are in the first line, which is far shorter.
    constexpr std::size_t cap = 1024;
    const std::string path = m_root + "/proc/stat";
    return told(path, ProcText::cpuTicks(fileBeginning(path, cap)));
}

std::optional<MemoryPages> ProcSystemReadings::memoryPages() {
    return told(m_root + memoryFile, ProcText::memoryPages(meminfo()));
}

std::optional<BatteryReading> ProcSystemReadings::battery() {
    const std::string folder = m_root + "/sys/class/power_supply";
    std::vector<PowerSupply::Attributes> supplies;
    for (const std::string& name : namesIn(folder)) {
        supplies.push_back(supplyAt(folder + "/" + name));
    }
    return PowerSupply::batteryReading(supplies);
}

std::optional<DiskCapacity> ProcSystemReadings::disk() {
    struct statvfs status {};
    errno = 0;
    DiskCapacity disk;
    const std::string path = m_root.empty() ? "/" : m_root;
    const bool isUsable = statvfs(path.c_str(), &status) == 0 && status.f_blocks > 0 &&
                          !__builtin_mul_overflow(status.f_blocks, status.f_frsize, &disk.total) &&
                          !__builtin_mul_overflow(status.f_bavail, status.f_frsize, &disk.available);
    return told(path, isUsable ? std::optional(disk) : std::nullopt);
}

} // namespace veslora
