// SPDX-License-Identifier: MIT
// Prompts, and the text by which the user judges them: nothing in it may hide.
// Seeds: agents/claude/hooks/PermissionRequest*.json
#include "VesloraCore/ClaudePermissionRequest.h"
#include "VesloraCore/ClaudeRequestText.h"
#include "VesloraCore/GraphemeClusters.h"
#include "VesloraCore/Scalars.h"
#include "fuzz/Fuzzing.h"

using namespace veslora;
using fuzz::require;

namespace {

void checkShown(std::string_view text) {
    const auto display = ClaudeRequestText::display(text);
    for (std::size_t at = 0; at < display.text.size();) {
        const auto scalar = Scalars::at(display.text, at);
        require(scalar.length > 0);
        require(!scalar.codePoint || !Scalars::isHidden(*scalar.codePoint));
        at += scalar.length;
    }
    const bool isLong = GraphemeClusters::exceeds(display.text, ClaudeRequestText::displayLimit);
    require(display.isComplete != isLong);
    const std::string shown = ClaudeRequestText::shown(display);
    require(!GraphemeClusters::exceeds(shown, ClaudeRequestText::displayLimit));
    require(!display.isComplete || shown == display.text);
    require(ClaudeRequestText::display(display.text).text == display.text);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text = fuzz::textOf(data, size);
    checkShown(text);
    if (const auto request = ClaudePermissionRequest::parse(text, "id", 5, "/home/me")) {
        require(!request->sessionId.empty() && !request->tool.empty());
        checkShown(request->text);
    }
    return 0;
}
