// SPDX-License-Identifier: MIT
// An island on a faked platform, with its controller and without a view.
#pragma once

#include "VesloraUI/Island/NotchWindowController.h"
#include "tests/VesloraUI/Fixtures/FakeMonitor.h"
#include "tests/VesloraUI/Fixtures/FakePlatform.h"

namespace veslora {

struct ControlledIsland {
    FakePlatform platform;
    FakeDefaults settings{platform};
    FakeMonitor claude;
    AgentsModel agents{{&claude}};
    NotchWindowController controller{platform.seams, platform.measuring, settings, agents,
                                     [](NotchViewModel&) { return IslandContent(); }};
};

} // namespace veslora
