// SPDX-License-Identifier: MIT
// Counting characters and cutting after them agree, for any bytes. The first byte is where to cut.
#include "VesloraCore/Text/GraphemeClusters.h"
#include "fuzz/Fuzzing.h"

#include <algorithm>

using namespace veslora;
using fuzz::require;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const std::size_t limit = data[0];
    const std::string_view text = fuzz::textOf(data + 1, size - 1);
    const std::size_t count = GraphemeClusters::count(text);
    require(count <= text.size());
    require(GraphemeClusters::exceeds(text, limit) == (count > limit));
    const std::string_view prefix = GraphemeClusters::prefix(text, limit);
    require(text.starts_with(prefix));
    require(GraphemeClusters::count(prefix) == std::min(count, limit));
    return 0;
}
