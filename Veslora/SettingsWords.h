// SPDX-License-Identifier: MIT
// The words of the command line that print and change settings. They need a QCoreApplication and give the
// exit status.
#pragma once

#include "VesloraCore/Island/CommandLine.h"
#include "VesloraCore/Text/Words.h"

namespace veslora::SettingsWords {

[[nodiscard]] int get(const CommandLine::Get& request, const Words& words);
[[nodiscard]] int set(const CommandLine::Set& request, const Words& words);
[[nodiscard]] int exportThem(const CommandLine::Export& request, const Words& words);
[[nodiscard]] int import(const CommandLine::Import& request, const Words& words);

} // namespace veslora::SettingsWords
