// SPDX-License-Identifier: MIT
// Reads the files that the kernel makes up as they are read, whose length is not known before. Usable from
// any thread.
#pragma once

#include <cstddef>
#include <string>

namespace veslora {

/// At most the first `cap` bytes of a file; empty, with `errno`, when it can't be read. Never waits for a
/// pipe's writer.
[[nodiscard]] std::string fileBeginning(const std::string& path, std::size_t cap);

} // namespace veslora
