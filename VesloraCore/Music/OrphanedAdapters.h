// SPDX-License-Identifier: MIT
// Finds media adapters whose program was killed and that run on without it.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace veslora {

/// The processes of the executable `adapter`, an absolute path, whose parent has died, in the order of the
/// listing. The listing has a line for each process: its id, its parent's id and its command, with blanks
/// between. Orphans go to process 1, or to the user's own service manager where the listing has one. Lines
/// of another form, and the same executable in another folder, count as nothing.
[[nodiscard]] std::vector<std::int32_t> orphanedAdapters(std::string_view listing, std::string_view adapter);

} // namespace veslora
