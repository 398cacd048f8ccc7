// SPDX-License-Identifier: MIT
// A line that asks for something asks for the same once it is written again, and no pause is out of bounds.
#include "VesloraCore/Island/CommandLine.h"
#include "fuzz/Fuzzing.h"

#include <tuple>

using namespace veslora;
using fuzz::require;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text = fuzz::textOf(data, size);
    if (const auto ask = CommandLine::askFor(text)) {
        require(CommandLine::askFor(CommandLine::lineFor(*ask)) == ask);
        if (const auto* pause = std::get_if<AlertPause::For>(&ask->length)) {
            require(pause->seconds >= AlertPause::shortest && pause->seconds <= AlertPause::longest);
        }
    }
    const std::string_view words[]{text.substr(0, size / 2), text.substr(size / 2)};
    std::ignore = CommandLine::parse(words);
    return 0;
}
