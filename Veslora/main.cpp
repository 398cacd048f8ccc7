// SPDX-License-Identifier: MIT
// The process entry: hands over to the application, and does nothing else.
#include "Veslora/VesloraApp.h"

int main(int argc, char** argv) {
    return veslora::VesloraApp::run(argc, argv);
}
