// SPDX-License-Identifier: MIT
// Whether the program runs for the first time, when it should show its user where the agents' hooks are put
// in: until then it shows nothing but a black notch. Main thread only.
#pragma once

namespace veslora {

class AgentsModel;
class Defaults;
class SupportDirectory;

/// To be asked once, after the monitors have started. True at most once for a support directory, and only
/// where no setting was ever stored and nothing of ours is in an agent's configuration. False where it can't
/// be remembered, rather than true at every start.
[[nodiscard]] bool takeFirstStart(const SupportDirectory& support, const Defaults& settings,
                                  const AgentsModel& agents);

} // namespace veslora
