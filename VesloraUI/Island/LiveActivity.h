// SPDX-License-Identifier: MIT
// Gathers from the models and the settings what the closed island is chosen from.
#pragma once

#include "VesloraCore/Island/ClosedIsland.h"

namespace veslora {

class AgentsModel;
class Defaults;
class KeepAwakeModel;
class TextMeasuring;
class TimerModel;

/// The models that the island shows. One that is missing reports nothing.
struct IslandModels {
    AgentsModel* agents = nullptr;
    KeepAwakeModel* keepAwake = nullptr;
    TimerModel* timer = nullptr;
};

[[nodiscard]] ClosedIslandActivity closedIslandActivity(const IslandModels& models, const Defaults& settings,
                                                        const TextMeasuring& measuring, Timestamp now);

} // namespace veslora
