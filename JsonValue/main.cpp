// SPDX-License-Identifier: MIT
// json-value PATH: prints the string, number or boolean at a dotted path of the JSON document on standard
// input, without what could move a terminal's cursor: the script's line ends up in the user's. Ends with
// status 1 and prints nothing where there is none. The status-line script starts it for every value that it
// shows, so it does nothing else.
#include "VesloraCore/Text/JsonPath.h"
#include "VesloraCore/Text/TerminalText.h"

#include <cstdio>
#include <optional>
#include <string>

namespace {

constexpr std::size_t longestInput = std::size_t{1} << 20;

/// All of standard input; nothing when it is longer than an agent's status ever is, or can't be read.
std::optional<std::string> readInput() {
    std::string input(longestInput + 1, '\0');
    const std::size_t length = std::fread(input.data(), 1, input.size(), stdin);
    if (length > longestInput || std::ferror(stdin)) {
        return std::nullopt;
    }
    input.resize(length);
    return input;
}

bool printValue(const std::string& path) {
    const std::optional<std::string> input = readInput();
    const std::optional<std::string> value = input ? veslora::JsonPath::valueAt(*input, path) : std::nullopt;
    if (!value) {
        return false;
    }
    const std::string shown = veslora::TerminalText::withoutControls(*value);
    return std::fwrite(shown.data(), 1, shown.size(), stdout) == shown.size() && std::fflush(stdout) == 0;
}

} // namespace

int main(int argc, char** argv) {
    return argc == 2 && printValue(argv[1]) ? 0 : 1;
}
