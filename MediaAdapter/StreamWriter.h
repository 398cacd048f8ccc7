// SPDX-License-Identifier: MIT
// The lines of the stream: one JSON object each, the first whole and the others with what changed. Any
// thread, one at a time.
#pragma once

#include "VesloraCore/Text/Json.h"

#include <optional>
#include <string>

namespace veslora {

class StreamWriter {
  public:
    /// The line, with its end, that takes a reader of all earlier lines to `payload`, an object; absent when
    /// it is there already. In a difference null stands for what went away; a payload that became empty is
    /// given whole.
    [[nodiscard]] std::optional<std::string> lineTo(const Json& payload);

  private:
    std::optional<Json> m_told;
};

} // namespace veslora
