// SPDX-License-Identifier: MIT
// Versions are in one order: each line is one, and of any two one is older or they are the same, the other
// way round too, and through a third.
#include "VesloraCore/Updates/ReleaseVersion.h"
#include "fuzz/Fuzzing.h"

#include <vector>

using namespace veslora;
using fuzz::require;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view text = fuzz::textOf(data, size);
    std::vector<ReleaseVersion> versions;
    constexpr std::size_t most = 8;
    while (!text.empty() && versions.size() < most) {
        const std::string_view line = fuzz::takeLine(text);
        if (const auto version = ReleaseVersion::parse(line)) {
            require(version->text() == line);
            require(line.find_first_of("/\\ \t\r") == std::string_view::npos);
            versions.push_back(*version);
        }
    }
    for (const auto& one : versions) {
        require(one == one);
        for (const auto& other : versions) {
            require((one <=> other) == (0 <=> (other <=> one)));
            for (const auto& third : versions) {
                require(!(one <= other && other <= third) || one <= third);
            }
        }
    }
    return 0;
}
