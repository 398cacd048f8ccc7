// SPDX-License-Identifier: MIT
// The queue behind InotifyDirectoryWatcher: which watch wants which events of which directory. Main thread
// only.
#pragma once

#include "VesloraLinux/System/FileDescriptor.h"
#include "VesloraUI/Platform/DirectoryWatcher.h"

#include <QSocketNotifier>

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

struct inotify_event;

namespace veslora {

/// One watch as the queue knows it; its handle clears `changed` when it goes.
struct InotifyListener {
    std::uint32_t events = 0;
    bool isActive = true;
    std::function<void(const DirectoryNews&)> changed;
    DirectoryNews news; ///< what it has yet to be told
};

class InotifyQueue {
  public:
    /// Null, with `errno`, when the directory can't be watched.
    [[nodiscard]] std::shared_ptr<InotifyListener> add(const std::string& directory, std::uint32_t events,
                                                       std::function<void(const DirectoryNews&)> changed);
    void remove(const std::shared_ptr<InotifyListener>& listener);

  private:
    using Listeners = std::vector<std::shared_ptr<InotifyListener>>;

    bool open();
    void drain();
    void take(const inotify_event& event, Listeners& told);
    static void tell(const std::shared_ptr<InotifyListener>& listener, const std::string& name,
                     Listeners& told);
    static void tellOfMore(const std::shared_ptr<InotifyListener>& listener, Listeners& told);
    void takeOverflow(Listeners& told) const;
    void end(int directory, Listeners& told);

    FileDescriptor m_descriptor;
    std::unique_ptr<QSocketNotifier> m_notifier;
    /// By the system's number of the directory. Watches of one directory share a number, whatever its path
    /// was.
    std::map<int, Listeners> m_directories;
};

} // namespace veslora
