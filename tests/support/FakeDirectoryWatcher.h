// SPDX-License-Identifier: MIT
// A watcher of directories whose events a test fires by hand. Main thread only.
#pragma once

#include "VesloraUI/Platform/DirectoryWatcher.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <set>
#include <vector>

namespace veslora {

class FakeDirectoryWatcher final : public DirectoryWatcher {
  public:
    /// Directories that can't be watched, as if they did not exist.
    std::set<std::string> refused;
    /// What another program does just before a watch hears anything.
    std::function<void(const std::string& directory)> beforeWatch;

    [[nodiscard]] std::unique_ptr<DirectoryWatch>
    watch(const std::string& directory, DirectoryChanges changes, std::function<void()> changed) override;

    [[nodiscard]] std::unique_ptr<DirectoryWatch>
    watchFiles(const std::string& directory, std::function<void(const DirectoryNews&)> changed) override;

    /// Calls every watch of `directory`, once each. A rename into it reaches all of them, any other change
    /// only those that asked for any.
    void fire(const std::string& directory, DirectoryChanges kind = DirectoryChanges::movedInto);

    /// Tells those who follow the files of `directory` what happened to them.
    void tell(const std::string& directory, const DirectoryNews& news);

    /// Ends every watch of `directory`, as when it is removed: they go inactive and are told so by one last
    /// call.
    void end(const std::string& directory);

    /// Every directory that has an active watch, each once.
    [[nodiscard]] std::vector<std::string> watched() const;

    /// How many active watches of `directory` there are.
    [[nodiscard]] std::size_t count(const std::string& directory) const;

  private:
    struct Record {
        std::string directory;
        std::optional<DirectoryChanges> changes; ///< absent for one who follows the files
        std::function<void(const DirectoryNews&)> changed;
        bool isActive = true;
    };
    class Watch;

    [[nodiscard]] std::unique_ptr<DirectoryWatch> add(Record record);
    [[nodiscard]] std::vector<std::shared_ptr<Record>> recordsOf(const std::string& directory) const;

    std::vector<std::weak_ptr<Record>> m_records;
};

} // namespace veslora
