// SPDX-License-Identifier: MIT
// Owner of one open file descriptor.
#pragma once

#include <unistd.h>

#include <utility>

namespace veslora {

/// Move-only; closes on destruction. A negative descriptor stands for none.
class FileDescriptor {
  public:
    FileDescriptor() = default;
    explicit FileDescriptor(int descriptor) : m_descriptor(descriptor) {}
    FileDescriptor(FileDescriptor&& other) noexcept : m_descriptor(std::exchange(other.m_descriptor, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        if (this != &other) {
            close();
            m_descriptor = std::exchange(other.m_descriptor, -1);
        }
        return *this;
    }
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    ~FileDescriptor() { close(); }

    [[nodiscard]] int value() const { return m_descriptor; }
    explicit operator bool() const { return m_descriptor >= 0; }

    /// Gives up ownership: the new owner closes it.
    int release() { return std::exchange(m_descriptor, -1); }

    /// What the system says to closing: a file that could not be stored may be told of only here. 0 is
    /// success.
    int close() {
        const int descriptor = std::exchange(m_descriptor, -1);
        return descriptor >= 0 ? ::close(descriptor) : 0;
    }

  private:
    int m_descriptor = -1;
};

} // namespace veslora
