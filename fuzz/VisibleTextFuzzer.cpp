// SPDX-License-Identifier: MIT
// Text from outside as it is shown: nothing in it may hide, and however long it is, little is left of it.
// Seeds: agents/claude/hooks/PermissionRequest*.json
#include "VesloraCore/Text/GraphemeClusters.h"
#include "VesloraCore/Text/Scalars.h"
#include "VesloraCore/Text/VisibleText.h"
#include "fuzz/Fuzzing.h"

#include <string>

using namespace veslora;
using fuzz::require;

namespace {

/// Whether nothing in the text is one of our own signs, which are spelled when they come from outside.
bool isWithoutSigns(std::string_view text) {
    for (const char* sign : {"␍", "⏎", "⇥", "␣", "⟨", "⟩"}) {
        if (text.find(sign) != std::string_view::npos) {
            return false;
        }
    }
    return true;
}

void requireThatAllIsVisible(std::string_view text) {
    int marks = 0;
    char32_t previous = U' ';
    for (std::size_t at = 0; at < text.size();) {
        const auto scalar = Scalars::at(text, at);
        require(scalar.codePoint.has_value());
        require(!Scalars::isHidden(*scalar.codePoint));
        marks = Scalars::isMark(*scalar.codePoint) ? marks + 1 : 0;
        require(marks <= 3);
        require(marks == 0 || (previous != U' ' && previous != U'⟩' && previous != *scalar.codePoint));
        previous = *scalar.codePoint;
        at += scalar.length;
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t largest = 200;
    if (size == 0) {
        return 0;
    }
    const std::size_t limit = data[0] % largest + 1;
    const std::string_view text = fuzz::textOf(data, size).substr(1);
    const auto made = VisibleText::spelled(text, limit);
    requireThatAllIsVisible(made.text);
    require(!GraphemeClusters::exceeds(made.text, limit));
    // At most four code points of four bytes a character, and one code and an ellipsis on top.
    require(made.text.size() <= limit * 16 + 32);
    require(made.isComplete || made.text.ends_with("…"));
    if (made.isComplete && isWithoutSigns(made.text)) {
        require(VisibleText::spelled(made.text, limit) == made);
    }
    return 0;
}
