// SPDX-License-Identifier: MIT
// Names in Codex's spool: whatever they hold, no id may lead out of the folder of answers.
#include "VesloraCore/Agents/Hooks/CodexSpoolName.h"
#include "VesloraCore/Text/IdentifierText.h"
#include "fuzz/Fuzzing.h"

using namespace veslora;
using fuzz::require;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text = fuzz::textOf(data, size);
    if (const auto name = CodexSpoolName::parse(text)) {
        require(IdentifierText::isPlain(name->id));
        require(!name->pid || *name->pid > 0);
        const bool isEvent = name->kind == CodexSpoolName::Kind::event;
        require(text == (isEvent ? "ev-" : "perm-") + name->id + ".json");
    }
    return 0;
}
