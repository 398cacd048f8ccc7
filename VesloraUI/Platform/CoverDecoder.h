// SPDX-License-Identifier: MIT
// Makes a picture of a cover's file. The file may be a stranger's, so that only the two formats of covers are
// tried, each by its own decoder, and nothing of unreasonable size. Pure functions, any thread.
#pragma once

#include <QImage>

#include <cstddef>
#include <string_view>

namespace veslora::CoverDecoder {

/// Characters of the longest base64 text that is decoded.
inline constexpr std::size_t longestText = std::size_t{8} << 20;
/// Pixels a side of the largest picture that is decoded.
inline constexpr int largestSide = 4096;
/// Pixels of the longer side of what is made of a larger picture; a cover is never drawn larger.
inline constexpr int side = 256;

/// The picture whose PNG or JPEG file is given as base64, as it is drawn fastest. Null for text that is no
/// base64, for any other file, and beyond the limits; a picture's size is looked at before it is decoded.
[[nodiscard]] QImage decode(std::string_view base64);

} // namespace veslora::CoverDecoder
