// SPDX-License-Identifier: MIT
// Prompts, and the text by which the user judges them.
// Seeds: agents/claude/hooks/PermissionRequest*.json
#include "VesloraCore/Agents/ClaudePermissionRequest.h"
#include "VesloraCore/Agents/ClaudeRequestText.h"
#include "VesloraCore/Text/GraphemeClusters.h"
#include "fuzz/Fuzzing.h"

using namespace veslora;
using fuzz::require;

namespace {

void checkShown(std::string_view text) {
    const auto display = ClaudeRequestText::display(text);
    require(!GraphemeClusters::exceeds(display.text, ClaudeRequestText::displayLimit));
    require(display.isComplete || display.text.ends_with("…"));
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
