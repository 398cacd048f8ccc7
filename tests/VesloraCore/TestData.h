// SPDX-License-Identifier: MIT
// Reads the captured files that tests are fed with.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace veslora::test {

/// The bytes of a file below tests/data; fails the test when it can't be read.
inline std::string dataFile(const std::string& path) {
    std::ifstream file(std::string(VESLORA_TEST_DATA "/") + path, std::ios::binary);
    EXPECT_TRUE(file.good()) << path;
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// The files of a directory below tests/data that end in `suffix`, as paths that `dataFile` takes, sorted.
inline std::vector<std::string> dataFiles(const std::string& directory, const std::string& suffix) {
    std::vector<std::string> found;
    for (const auto& entry :
         std::filesystem::directory_iterator(std::string(VESLORA_TEST_DATA "/") + directory)) {
        const std::string name = entry.path().filename().string();
        if (name.ends_with(suffix)) {
            found.push_back(directory + "/" + name);
        }
    }
    std::ranges::sort(found);
    EXPECT_FALSE(found.empty()) << directory;
    return found;
}

} // namespace veslora::test
