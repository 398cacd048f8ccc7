// SPDX-License-Identifier: MIT
// Reads a player's properties as they come over the bus, where any of them may be missing or of a wrong type.
// Pure functions, any thread.
#pragma once

#include "MediaAdapter/Player.h"

#include <QVariantMap>

#include <optional>
#include <string>

namespace veslora::PropertyValues {

/// Longest text that is taken of anything, in code points; the rest is cut off.
inline constexpr int longestText = 4096;

/// A boolean, a text and seconds out of microseconds; absent for a value of another type.
[[nodiscard]] std::optional<bool> flag(const QVariant& value);
[[nodiscard]] std::optional<std::string> text(const QVariant& value);
[[nodiscard]] std::optional<double> seconds(const QVariant& value);

/// A value of dictionary type; empty for any other.
[[nodiscard]] QVariantMap map(const QVariant& value);

/// The track that metadata describe. Its length is absent where it is not positive or beyond belief.
[[nodiscard]] Track track(const QVariantMap& metadata);

/// Absent for any other word than the three.
[[nodiscard]] std::optional<PlaybackStatus> status(const QVariant& value);

} // namespace veslora::PropertyValues
