// SPDX-License-Identifier: MIT
// Ordinary commands in many languages, as the test data has them.
#pragma once

#include "VesloraCore/Text/Json.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

namespace veslora::test {

struct Command {
    std::string name;
    bool needsNoto = false; ///< the fonts of tools/setup lack some of its letters
    std::string text;
};

inline std::vector<Command> commands() {
    std::ifstream lines(VESLORA_TEST_DATA "/commands.txt");
    std::vector<Command> all;
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with('#')) {
            continue;
        }
        const std::size_t fonts = line.find('\t');
        const std::size_t text = line.find('\t', fonts + 1);
        const auto value = Json::parse(line.substr(text + 1));
        EXPECT_TRUE(value && value->string()) << line;
        const bool needsNoto = line.substr(fonts + 1, text - fonts - 1) == "noto";
        all.push_back({line.substr(0, fonts), needsNoto, value ? *value->string() : ""});
    }
    EXPECT_EQ(all.size(), 49U);
    return all;
}

} // namespace veslora::test
