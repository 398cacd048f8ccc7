// SPDX-License-Identifier: MIT
// What the command line asks of the settings. Main thread only.
#pragma once

#include "VesloraCore/Island/CommandLine.h"
#include "VesloraUI/Store/Defaults.h"

#include <string>

namespace veslora::SettingsCommand {

/// All settings, as one line of JSON.
[[nodiscard]] CommandOutcome exported(const Defaults& settings);
/// Takes over a text of settings and writes them to the disk before it returns; nothing of a text in which
/// anything is wrong. Where the disk refuses, that is a failure, though the store holds them.
[[nodiscard]] CommandOutcome import(Defaults& settings, const std::string& text);

} // namespace veslora::SettingsCommand
