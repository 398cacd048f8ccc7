// SPDX-License-Identifier: MIT
// The application: makes the platform, registers the settings' defaults, and builds the tree that the
// delegate holds.
#pragma once

namespace veslora::VesloraApp {

/// Runs the program to its end. A second start asks the first one to show its settings, and ends at once with
/// 0.
int run(int argc, char** argv);

} // namespace veslora::VesloraApp
