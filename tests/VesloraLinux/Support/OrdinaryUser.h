// SPDX-License-Identifier: MIT
// Tests that run as root, where the rights of files mean nothing.
#pragma once

#include <unistd.h>

#include <cstdlib>
#include <stdexcept>
#include <string>

namespace veslora::testing {

inline constexpr uid_t nobody = 65534;

/// Runs a scope as an ordinary user, who then owns the folder.
class AsOrdinaryUser {
  public:
    explicit AsOrdinaryUser(const std::string& folder) {
        if (m_isRoot &&
            (chown(folder.c_str(), nobody, nobody) != 0 || setegid(nobody) != 0 || seteuid(nobody) != 0)) {
            throw std::runtime_error("can't become an ordinary user");
        }
    }
    AsOrdinaryUser(const AsOrdinaryUser&) = delete;
    AsOrdinaryUser& operator=(const AsOrdinaryUser&) = delete;
    ~AsOrdinaryUser() {
        if (m_isRoot && (seteuid(0) != 0 || setegid(0) != 0)) {
            std::abort();
        }
    }

  private:
    bool m_isRoot = geteuid() == 0;
};

} // namespace veslora::testing
