// SPDX-License-Identifier: MIT
// Failures that are met at every look again, so that a log tells of each once: when it begins, and again when
// it comes back after it went away. Each belongs to one thread at a time.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <system_error>
#include <utility>

namespace veslora {

class Trouble {
  public:
    /// Takes in how it went this time. True when it failed, but not for the same reason as the last time.
    bool begins(const std::error_code& error) { return std::exchange(m_last, error) != error && error; }

  private:
    std::error_code m_last;
};

/// The same for many things, told apart by their names.
class Troubles {
  public:
    bool begins(const std::string& name, const std::error_code& error) {
        if (!error) {
            m_last.erase(name);
            return false;
        }
        return std::exchange(m_last[name], error) != error;
    }
    [[nodiscard]] std::size_t size() const { return m_last.size(); }

  private:
    std::map<std::string, std::error_code> m_last; ///< of what fails now
};

} // namespace veslora
