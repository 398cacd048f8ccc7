// SPDX-License-Identifier: MIT
// Reads a picture's file that another program has named. Any thread.
#pragma once

#include <QByteArray>

#include <string>

namespace veslora::ArtworkFile {

/// The largest picture that is read, in bytes, from a file as from elsewhere.
inline constexpr qsizetype largest = qsizetype{8} << 20;

/// The file's bytes. Empty for anything but a regular file of our own user that is no longer than that; a
/// link is never followed, and a pipe never waited for.
[[nodiscard]] QByteArray read(const std::string& path);

} // namespace veslora::ArtworkFile
