// SPDX-License-Identifier: MIT
// Measures text in the fonts that the views draw with.
#pragma once

#include "VesloraUI/Platform/TextMeasuring.h"

namespace veslora {

class QtTextMeasuring : public TextMeasuring {
  public:
    [[nodiscard]] double wingTextWidth(const std::string& text) const override;
};

} // namespace veslora
