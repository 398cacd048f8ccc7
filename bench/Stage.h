// SPDX-License-Identifier: MIT
// A display, a window manager, a compositor and a message bus of the harness's own; they end with it.
#pragma once

#include "bench/Display.h"
#include "tests/VesloraLinux/Support/PrivateDisplay.h"
#include "tests/VesloraLinux/Support/TemporaryFolder.h"

#include <memory>
#include <string>

namespace veslora::bench {

class Stage {
  public:
    static constexpr int width = 1440;
    static constexpr int height = 900;

    /// Replaces this process's environment by that of the stage. The desktop is plain blue, so that neither
    /// the island's black nor its text, which is lit in red, can be mistaken for it.
    Stage();

    [[nodiscard]] const Display& display() const { return *m_display; }
    [[nodiscard]] static bool isDesktop(Pixel pixel) { return pixel.blue() > 240 && pixel.red() < 16; }
    [[nodiscard]] static bool isBlack(Pixel pixel) {
        return pixel.blue() < 16 && pixel.green() < 16 && pixel.red() < 16;
    }

  private:
    struct Environment {
        explicit Environment(const std::string& home);
    };

    testing::TemporaryFolder m_home;
    Environment m_environment;
    testing::PrivateDisplay m_pieces;
    std::unique_ptr<Display> m_display;
};

} // namespace veslora::bench
