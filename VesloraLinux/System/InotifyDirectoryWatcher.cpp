// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/InotifyDirectoryWatcher.h"

#include "VesloraLinux/System/InotifyQueue.h"
#include "VesloraLinux/System/PosixReading.h"
#include "VesloraUI/Platform/Logs.h"

#include <sys/inotify.h>

namespace veslora {
namespace {

class InotifyWatch final : public DirectoryWatch {
  public:
    InotifyWatch(std::weak_ptr<InotifyQueue> queue, std::shared_ptr<InotifyListener> listener)
        : m_queue(std::move(queue)), m_listener(std::move(listener)) {}
    InotifyWatch(const InotifyWatch&) = delete;
    InotifyWatch& operator=(const InotifyWatch&) = delete;
    ~InotifyWatch() override {
        if (const auto queue = m_queue.lock()) {
            queue->remove(m_listener);
        }
        const auto dropped = std::exchange(m_listener->changed, nullptr);
    }

    [[nodiscard]] bool isActive() const override { return m_listener->isActive && !m_queue.expired(); }

  private:
    std::weak_ptr<InotifyQueue> m_queue;
    std::shared_ptr<InotifyListener> m_listener;
};

std::uint32_t eventsOf(DirectoryChanges changes) {
    return changes == DirectoryChanges::movedInto
               ? IN_MOVED_TO
               : IN_CLOSE_WRITE | IN_CREATE | IN_MOVED_FROM | IN_MOVED_TO | IN_DELETE;
}

} // namespace

InotifyDirectoryWatcher::InotifyDirectoryWatcher() : m_queue(std::make_shared<InotifyQueue>()) {}
InotifyDirectoryWatcher::~InotifyDirectoryWatcher() = default;

std::unique_ptr<DirectoryWatch> InotifyDirectoryWatcher::watch(const std::string& directory,
                                                               DirectoryChanges changes,
                                                               std::function<void()> changed) {
    return add(directory, eventsOf(changes), [changed = std::move(changed)](const auto&) { changed(); });
}

std::unique_ptr<DirectoryWatch>
InotifyDirectoryWatcher::watchFiles(const std::string& directory,
                                    std::function<void(const DirectoryNews&)> changed) {
    constexpr std::uint32_t whileWriting = IN_MODIFY | IN_ATTRIB;
    return add(directory, eventsOf(DirectoryChanges::any) | whileWriting, std::move(changed));
}

std::unique_ptr<DirectoryWatch>
InotifyDirectoryWatcher::add(const std::string& directory, std::uint32_t events,
                             std::function<void(const DirectoryNews&)> changed) {
    auto listener = m_queue->add(directory, events, std::move(changed));
    tell(directory, listener ? std::error_code() : PosixReading::lastError());
    return listener ? std::make_unique<InotifyWatch>(m_queue, std::move(listener)) : nullptr;
}

/// Callers try again at each look, and a folder of an agent's may never come to be.
void InotifyDirectoryWatcher::tell(const std::string& directory, const std::error_code& error) {
    if (!m_troubles.begins(directory, error)) {
        return;
    }
    const std::string place = Logs::place(directory);
    if (error == std::errc::no_such_file_or_directory) {
        qCInfo(Logs::system, "there is no %s to watch", place.c_str());
    } else {
        qCWarning(Logs::system, "can't watch %s: %s", place.c_str(), error.message().c_str());
    }
}

} // namespace veslora
