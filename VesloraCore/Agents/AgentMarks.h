// SPDX-License-Identifier: MIT
// What stands for each agent on the island: its picture, its spinner, and the blink of a light that works.
// Spinners and blinks are pure functions of the date, so that every view shows the same at the same moment
// and nothing has to run them.
#pragma once

#include "VesloraCore/Timestamp.h"

#include <array>
#include <string_view>

namespace veslora {

/// What turns beside the notch while an agent works, such as ClaudeSpinner.
struct AgentSpinner {
    std::string_view (*frame)(Timestamp date) = nullptr;
    double period = 0; ///< seconds of one frame
    int size = 0;      ///< of the glyphs, in points
    double offset = 0; ///< points below the middle, where the glyphs of a font are too high
};

namespace ClaudeMascot {

/// '#' for a filled cell, '.' for an empty one. A cell is twice as high as it is wide.
inline constexpr std::array<std::string_view, 5> rows{
    "..#############..", "..##.#######.##..", "#################", "..#############..", "..#.#.......#.#..",
};

} // namespace ClaudeMascot

namespace ClaudeSpinner {

inline constexpr double period = 0.12; ///< seconds of one frame
inline constexpr std::array<std::string_view, 12> frames{"·", "✢", "✳", "✶", "✻", "✽",
                                                         "✽", "✻", "✶", "✳", "✢", "·"};

/// One glyph. A date that is no finite number gives the first.
[[nodiscard]] std::string_view frame(Timestamp date);

} // namespace ClaudeSpinner

namespace CodexSpinner {

inline constexpr double period = 0.1; ///< seconds of one frame
inline constexpr std::array<std::string_view, 10> frames{"⠋", "⠙", "⠹", "⠸", "⠼", "⠴", "⠦", "⠧", "⠇", "⠏"};

/// One glyph. A date that is no finite number gives the first.
[[nodiscard]] std::string_view frame(Timestamp date);

} // namespace CodexSpinner

namespace StatusBlink {

inline constexpr double period = 0.5; ///< seconds for which the light stays as it is

/// Whether the light of a working session is lit at that date.
[[nodiscard]] bool isLit(Timestamp date);

} // namespace StatusBlink

} // namespace veslora
