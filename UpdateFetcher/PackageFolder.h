// SPDX-License-Identifier: MIT
// The private folder in which a package waits to be installed. Everything in it is reached through its
// descriptor, and no link is ever followed. Any thread, one at a time.
#pragma once

#include "VesloraCore/Updates/UpdateFailure.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace veslora {

class PackageFolder {
  public:
    /// Opens a folder of our own user that nobody else may enter; a link in its place is refused.
    explicit PackageFolder(const std::string& path);
    ~PackageFolder();
    PackageFolder(const PackageFolder&) = delete;
    PackageFolder& operator=(const PackageFolder&) = delete;

    /// Whether it could be opened; else nothing below succeeds.
    [[nodiscard]] bool isUsable() const { return m_folder >= 0; }

    /// Removes all files and begins a new one, under a name of its own until it is `kept`.
    [[nodiscard]] bool begin(const std::string& name);
    /// Adds bytes to it; false where the disk refuses.
    [[nodiscard]] bool add(std::string_view bytes);
    /// What lies on the disk by now of the file that was begun.
    [[nodiscard]] std::optional<std::string> written() const;
    /// Gives it its name, when it has reached the disk.
    [[nodiscard]] bool keep();
    /// Removes it again.
    void drop();

    /// A file's bytes. Absent for anything but a regular file of our own user, with no other name, of just
    /// that length.
    [[nodiscard]] std::optional<std::string> read(const std::string& name, std::int64_t length) const;

    /// The name of a file that is still being written.
    [[nodiscard]] static std::string partOf(const std::string& name) { return name + ".part"; }

  private:
    void clear() const;

    int m_folder = -1;
    int m_file = -1; ///< that was begun
    std::string m_name;
};

} // namespace veslora
