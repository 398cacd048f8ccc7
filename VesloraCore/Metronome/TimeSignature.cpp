// SPDX-License-Identifier: MIT
#include "VesloraCore/Metronome/TimeSignature.h"

#include <algorithm>

namespace veslora {

TimeSignature TimeSignature::fromStoredValue(std::optional<std::string_view> text) {
    const auto* found = std::ranges::find_if(
        all, [&](const TimeSignature& signature) { return text && signature.storedValue() == *text; });
    return found == all.end() ? common : *found;
}

std::string TimeSignature::display() const {
    return std::to_string(beats) + "/" + std::to_string(unit);
}

TimeSignature TimeSignature::next() const {
    const auto* found = std::ranges::find(all, *this);
    const std::ptrdiff_t position = found == all.end() ? 0 : found - all.begin();
    return all[static_cast<std::size_t>(position + 1) % all.size()];
}

} // namespace veslora
