// SPDX-License-Identifier: MIT
// How the time of a keep-awake session reads.
#pragma once

#include "VesloraCore/Text/Words.h"

#include <optional>
#include <string>

namespace veslora::KeepAwakeText {

/// For the widget's clock: "0:30:00", always with its hours, or "∞" for a session without an end. Rounded up
/// to whole seconds. An absent value, a negative one and one that is no number read "0:00:00"; a length
/// beyond a million hours reads as that.
[[nodiscard]] std::string remaining(std::optional<double> seconds, bool indefinite);

/// For the closed island: "59M", or "1:24" from an hour on. Cut to whole minutes, and never less than "1M",
/// which a value that is no number reads too. Held to a million hours.
[[nodiscard]] std::string shortText(double seconds, const Words& words = {});

} // namespace veslora::KeepAwakeText
