// SPDX-License-Identifier: MIT
// Session files, which a reader can meet half written.
// Seeds: agents/claude/sessions/*.json
#include "VesloraCore/Agents/ClaudeSessionFile.h"
#include "fuzz/Fuzzing.h"

#include <cmath>

using namespace veslora;
using fuzz::require;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (const auto file = ClaudeSessionFile::parse(fuzz::textOf(data, size))) {
        require(!file->sessionId.empty());
        require(!file->statusSince || std::isfinite(*file->statusSince));
        require(!file->waitingFor || !file->isBusy);
    }
    return 0;
}
