// SPDX-License-Identifier: MIT
// Directory watches by one inotify queue. The queue is opened with the first watch. Main thread only.
#pragma once

#include "VesloraUI/Platform/DirectoryWatcher.h"
#include "VesloraUI/Platform/Trouble.h"

#include <cstdint>
#include <memory>
#include <string>
#include <system_error>

namespace veslora {

class InotifyQueue;

class InotifyDirectoryWatcher final : public DirectoryWatcher {
  public:
    InotifyDirectoryWatcher();
    ~InotifyDirectoryWatcher() override;
    InotifyDirectoryWatcher(const InotifyDirectoryWatcher&) = delete;
    InotifyDirectoryWatcher& operator=(const InotifyDirectoryWatcher&) = delete;

    /// A directory that is removed, unmounted or moved elsewhere makes one last call and ends the watch.
    [[nodiscard]] std::unique_ptr<DirectoryWatch>
    watch(const std::string& directory, DirectoryChanges changes, std::function<void()> changed) override;

    [[nodiscard]] std::unique_ptr<DirectoryWatch>
    watchFiles(const std::string& directory, std::function<void(const DirectoryNews&)> changed) override;

  private:
    [[nodiscard]] std::unique_ptr<DirectoryWatch> add(const std::string& directory, std::uint32_t events,
                                                      std::function<void(const DirectoryNews&)> changed);

    void tell(const std::string& directory, const std::error_code& error);

    std::shared_ptr<InotifyQueue> m_queue;
    Troubles m_troubles;
};

} // namespace veslora
