// SPDX-License-Identifier: MIT
// The application: makes the platform, registers the settings' defaults, and builds the tree that the
// delegate holds.
#pragma once

namespace veslora::VesloraApp {

/// Does what the command line asks for and gives the exit status. Without a word it runs the program to its
/// end; a second start asks the first one to show its settings, and ends. 0 when it was done, 1 when it could
/// not be done, which one line on standard error explains, and 2 for a word without a meaning.
int run(int argc, char** argv);

} // namespace veslora::VesloraApp
