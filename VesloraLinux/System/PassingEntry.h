// SPDX-License-Identifier: MIT
// A name in a folder under which something lies until it is complete. Any thread, one at a time.
#pragma once

#include <cerrno>
#include <string>
#include <string_view>
#include <system_error>

namespace veslora {

class PassingEntry {
  public:
    /// In folders of our own, as the hook scripts' own files: readers of a spool pass over such names, and
    /// what a crash leaves behind is swept with theirs.
    static constexpr std::string_view inOurFolder = "tmp.";
    /// In folders of the user's, where nobody else names a file so.
    static constexpr std::string_view inUsersFolder = ".veslora-tmp.";

    /// Makes nothing yet. The folder's descriptor must outlive this.
    PassingEntry(int folder, std::string_view prefix);
    PassingEntry(const PassingEntry&) = delete;
    PassingEntry& operator=(const PassingEntry&) = delete;
    /// Removes what lies under the name, unless it was moved to its place or given up.
    ~PassingEntry();

    /// Calls `make` with the folder and the name until it finds none taken; `make` returns false and sets
    /// errno on failure.
    template <typename Make>
    std::error_code make(const Make& make) {
        constexpr int mostAttempts = 100;
        for (int attempt = 0; attempt < mostAttempts; ++attempt) {
            if (make(m_folder, name())) {
                m_isMade = true;
                return {};
            }
            if (errno != EEXIST) {
                return {errno, std::generic_category()};
            }
            rename();
        }
        return std::make_error_code(std::errc::file_exists);
    }

    [[nodiscard]] const char* name() const { return m_name.c_str(); }
    /// Replaces whatever has that name.
    std::error_code moveTo(const std::string& name);
    /// Leaves it where it lies: somebody else moved or keeps it.
    void giveUp() { m_isMade = false; }

    /// Whether a name is one that this gives, with that prefix.
    [[nodiscard]] static bool isPassing(std::string_view name, std::string_view prefix);

  private:
    void rename();

    int m_folder;
    std::string_view m_prefix;
    std::string m_name;
    bool m_isMade = false;
};

} // namespace veslora
