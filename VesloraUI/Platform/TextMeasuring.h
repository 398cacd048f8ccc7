// SPDX-License-Identifier: MIT
// The seam that tells how wide a text comes out, so that sizes can be decided without fonts.
#pragma once

#include <string>

namespace veslora {

class TextMeasuring {
  public:
    virtual ~TextMeasuring() = default;

    /// Width in points of `text` in the monospaced font at size 12, semibold: the font of the closed island's
    /// wings.
    [[nodiscard]] virtual double wingTextWidth(const std::string& text) const = 0;
};

} // namespace veslora
