// SPDX-License-Identifier: MIT
// Why hooks could not be put in or taken out, in the user's language. Main thread only.
#pragma once

#include "VesloraCore/Agents/AgentTraits.h"

#include <QString>

#include <functional>

namespace veslora::HookFailures {

/// Does something with the hooks of that agent. Empty when it was done; else a sentence on why nothing was
/// changed. Of what is thrown `InstallError` and `FileError` end here.
[[nodiscard]] QString textOf(const std::function<void()>& work, const AgentTraits& agent);

} // namespace veslora::HookFailures
