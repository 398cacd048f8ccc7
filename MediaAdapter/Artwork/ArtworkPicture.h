// SPDX-License-Identifier: MIT
// Makes a small picture of a stranger's. Any thread.
#pragma once

#include <QByteArray>

namespace veslora::ArtworkPicture {

/// Longest side of a picture that is decoded, and of the one that is made of it, in pixels.
inline constexpr int largestDecoded = 4096;
inline constexpr int largestMade = 256;

/// A PNG or JPEG of the picture, or of the first picture of several, made smaller where it is too large.
/// Empty for bytes that are no PNG, JPEG, WebP or GIF, for one of those that can't be decoded here, and for
/// one whose size is beyond the limit, which is not decoded at all.
[[nodiscard]] QByteArray shrunk(const QByteArray& bytes);

} // namespace veslora::ArtworkPicture
