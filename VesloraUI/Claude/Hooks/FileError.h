// SPDX-License-Identifier: MIT
// A file that could not be read or written while hooks were put in or taken out. Shown by the settings
// window.
#pragma once

#include <string>
#include <system_error>
#include <utility>

namespace veslora {

class FileError : public std::system_error {
  public:
    enum class Action { reading, writing };

    FileError(const std::error_code& reason, Action action, std::string path)
        : std::system_error(reason, path), m_action(action), m_path(std::move(path)) {}

    [[nodiscard]] Action action() const { return m_action; }
    /// The file or folder, with every link in it followed.
    [[nodiscard]] const std::string& path() const { return m_path; }

    /// Throws if there is an error.
    static void throwIfFailed(const std::error_code& error, const std::string& path,
                              Action action = Action::writing) {
        if (error) {
            throw FileError(error, action, path);
        }
    }

  private:
    Action m_action;
    std::string m_path;
};

} // namespace veslora
