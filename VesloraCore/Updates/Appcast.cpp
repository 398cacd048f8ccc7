// SPDX-License-Identifier: MIT
#include "VesloraCore/Updates/Appcast.h"

#include <algorithm>
#include <array>
#include <utility>

namespace veslora::Appcast {

std::optional<AppcastItem> newest(const std::vector<AppcastItem>& items, std::string_view kind,
                                  std::string_view architecture) {
    std::optional<AppcastItem> best;
    for (const AppcastItem& item : items) {
        const bool fits =
            item.kind == kind && (item.architecture == architecture || item.architecture == "all");
        if (fits && (!best || item.version > best->version)) {
            best = item;
        }
    }
    return best;
}

std::string_view debianArchitecture(std::string_view processor) {
    constexpr std::array<std::pair<std::string_view, std::string_view>, 5> names{{
        {"x86_64", "amd64"},
        {"arm64", "arm64"},
        {"i386", "i386"},
        {"arm", "armhf"},
        {"riscv64", "riscv64"},
    }};
    const auto* const found = std::ranges::find(names, processor, &decltype(names)::value_type::first);
    return found == names.end() ? std::string_view() : found->second;
}

std::string fileName(const ReleaseVersion& version, std::string_view architecture) {
    return "veslora_" + version.text() + "_" + std::string(architecture) + ".deb";
}

} // namespace veslora::Appcast
