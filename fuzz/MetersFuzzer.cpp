// SPDX-License-Identifier: MIT
// What the kernel tells of processor, memory and power supplies. A text is read as each of them; for the
// supplies a line is an attribute, and an empty one begins the next supply. Seeds: system/stat
// system/*.meminfo
#include "VesloraCore/System/PowerSupply.h"
#include "VesloraCore/System/ProcText.h"
#include "fuzz/Fuzzing.h"

using namespace veslora;
using fuzz::require;

namespace {

void checkMemory(std::string_view text) {
    if (const auto pages = ProcText::memoryPages(text)) {
        const auto used =
            MeterMath::memoryUsedBytes(pages->internalPages, pages->purgeablePages, pages->wiredPages,
                                       pages->compressedPages, pages->pageSize);
        const auto total = ProcText::memoryTotal(text);
        require(!total || (used && *used <= *total));
    }
}

std::vector<PowerSupply::Attributes> suppliesOf(std::string_view text) {
    std::vector<PowerSupply::Attributes> supplies(1);
    while (!text.empty()) {
        const std::string_view line = fuzz::takeLine(text);
        const std::size_t equals = line.find('=');
        if (line.empty()) {
            supplies.emplace_back();
        } else if (equals != std::string_view::npos) {
            supplies.back()[std::string(line.substr(0, equals))] =
                std::string(line.substr(equals + 1)) + "\n";
        }
    }
    return supplies;
}

void checkTime(const std::optional<int>& minutes) {
    require(!minutes || (*minutes >= 0 && *minutes <= 10 * 24 * 60));
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text = fuzz::textOf(data, size);
    if (const auto ticks = ProcText::cpuTicks(text)) {
        const auto usage = MeterMath::cpuUsage({}, *ticks);
        require(!usage || (usage->user >= 0 && usage->system >= 0 && usage->total() <= 1.000001));
    }
    checkMemory(text);
    if (const auto battery = PowerSupply::batteryReading(suppliesOf(text))) {
        require(battery->percent >= 0 && battery->percent <= 1.5);
        checkTime(battery->minutesToFull);
        checkTime(battery->minutesToEmpty);
        require(!MeterMath::batteryDetail(*battery).empty());
    }
    return 0;
}
