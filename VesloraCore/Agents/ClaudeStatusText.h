// SPDX-License-Identifier: MIT
// How the status of a session reads in a list, and whether its light is lit.
#pragma once

#include "VesloraCore/Agents/ClaudeSessionStatus.h"
#include "VesloraCore/Text/Words.h"
#include "VesloraCore/Timestamp.h"

#include <string>

namespace veslora::ClaudeStatusText {

/// "APPROVE", "DONE", "IDLE", or for a working session how long it has been at it: "<1M", "12M", "1H05". A
/// session that began in the future has only just begun; beyond a hundred thousand hours the text stays as it
/// is then.
[[nodiscard]] std::string label(const ClaudeSessionStatus& status, Timestamp now, const Words& words = {});

/// The light of a working session blinks, that of an idle one is off, every other one is on.
[[nodiscard]] bool isLit(const ClaudeSessionStatus& status, Timestamp now);

} // namespace veslora::ClaudeStatusText
