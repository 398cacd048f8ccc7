// SPDX-License-Identifier: MIT
// A command in the form in which the system takes it.
#pragma once

#include <string>
#include <vector>

namespace veslora::bench {

/// Points into `command`, which must outlive it.
[[nodiscard]] inline std::vector<char*> argumentsOf(std::vector<std::string>& command) {
    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (std::string& word : command) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);
    return arguments;
}

} // namespace veslora::bench
