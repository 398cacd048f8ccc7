// SPDX-License-Identifier: MIT
// Owner of one open file descriptor.
#pragma once

#include <unistd.h>

namespace veslora {

/// Closes on destruction. A negative descriptor stands for none.
class Descriptor {
  public:
    explicit Descriptor(int value) : m_value(value) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (m_value >= 0) {
            close(m_value);
        }
    }

    [[nodiscard]] int value() const { return m_value; }
    explicit operator bool() const { return m_value >= 0; }

  private:
    int m_value;
};

} // namespace veslora
