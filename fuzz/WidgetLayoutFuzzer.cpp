// SPDX-License-Identifier: MIT
// A stored layout is repaired into one that holds to its rules, and is then written and read without a
// change.
#include "VesloraCore/Widgets/WidgetLayout.h"
#include "fuzz/Fuzzing.h"

#include <algorithm>
#include <numeric>
#include <set>

using namespace veslora;
using fuzz::require;

namespace {

void checkRules(const WidgetLayout& layout) {
    std::set<WidgetID> seen;
    for (const WidgetEntry& entry : layout.entries) {
        require(seen.insert(entry.id).second);
        const auto offered = sizes(entry.id);
        require(std::ranges::find(offered, entry.size) != offered.end());
    }
    require(layout.entries.size() + layout.available().size() == allWidgetIDs.size());
}

void checkPages(const WidgetLayout& layout) {
    std::size_t count = 0;
    for (const auto& page : layout.pages()) {
        const int units = std::accumulate(page.begin(), page.end(), 0, [](int sum, const WidgetEntry& entry) {
            return sum + entry.units();
        });
        require(!page.empty() && units <= WidgetLayout::unitsPerPage);
        count += page.size();
    }
    require(count == layout.entries.size());
}

void checkMoves(const WidgetLayout& layout, int index) {
    for (const WidgetID id : layout.ids()) {
        WidgetLayout moved = layout;
        moved.move(id, layout.clampedIndex(index, id, 0));
        checkRules(moved);
        require(moved.entries.size() == layout.entries.size());
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text = fuzz::textOf(data, size);
    const auto layout = WidgetLayout::fromStoredValue(text);
    checkRules(layout);
    checkPages(layout);
    checkMoves(layout, static_cast<int>(size % 16) - 4);
    require(WidgetLayout::fromStoredValue(layout.storedValue()) == layout);
    return 0;
}
