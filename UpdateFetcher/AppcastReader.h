// SPDX-License-Identifier: MIT
// Reads a feed of releases: RSS 2.0 with a version, an architecture and a signature in each enclosure, in a
// namespace of our own ("urn:veslora:appcast"); tools/sign-release writes it. Pure function, any thread.
#pragma once

#include "VesloraCore/Updates/Appcast.h"

#include <QByteArray>

#include <optional>
#include <vector>

namespace veslora::AppcastReader {

/// Longest notes of a release, in UTF-16 units; longer ones are cut.
inline constexpr qsizetype longestNotes = 8000;
/// Releases that are looked at; those after them are not.
inline constexpr std::size_t mostItems = 200;

/// The packages of a feed, in its order. One whose enclosure lacks something, or has it in another form, is
/// left out, as a later version may write another kind of it. Absent for what is no well-formed RSS, for one
/// with a document type, and so with entities of its own, and for nothing at all.
[[nodiscard]] std::optional<std::vector<AppcastItem>> read(const QByteArray& feed);

} // namespace veslora::AppcastReader
