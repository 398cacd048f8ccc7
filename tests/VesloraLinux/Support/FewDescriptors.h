// SPDX-License-Identifier: MIT
// A process that has no file descriptor left.
#pragma once

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <stdexcept>

namespace veslora::testing {

/// While this lives, nothing more can be opened.
class FewDescriptors {
  public:
    FewDescriptors() {
        const int next = open("/dev/null", O_RDONLY | O_CLOEXEC);
        close(next);
        getrlimit(RLIMIT_NOFILE, &m_former);
        const rlimit limit{static_cast<rlim_t>(next), m_former.rlim_max};
        if (next < 0 || setrlimit(RLIMIT_NOFILE, &limit) != 0) {
            throw std::runtime_error("can't limit the descriptors");
        }
    }
    FewDescriptors(const FewDescriptors&) = delete;
    FewDescriptors& operator=(const FewDescriptors&) = delete;
    ~FewDescriptors() { setrlimit(RLIMIT_NOFILE, &m_former); }

  private:
    rlimit m_former{};
};

} // namespace veslora::testing
