// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/InotifyQueue.h"

#include "VesloraUI/Platform/Logs.h"

#include <sys/inotify.h>

#include <algorithm>

namespace veslora {
namespace {

constexpr std::uint32_t endOfDirectory = IN_DELETE_SELF | IN_MOVE_SELF | IN_IGNORED | IN_UNMOUNT;

void addOnce(std::vector<std::shared_ptr<InotifyListener>>& told,
             const std::shared_ptr<InotifyListener>& listener) {
    if (std::ranges::find(told, listener) == told.end()) {
        told.push_back(listener);
    }
}

} // namespace

bool InotifyQueue::open() {
    if (m_descriptor) {
        return true;
    }
    m_descriptor = FileDescriptor(inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
    if (!m_descriptor) {
        return false;
    }
    m_notifier = std::make_unique<QSocketNotifier>(m_descriptor.value(), QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] { drain(); });
    return true;
}

std::shared_ptr<InotifyListener> InotifyQueue::add(const std::string& directory, std::uint32_t events,
                                                   std::function<void(const DirectoryNews&)> changed) {
    if (!open()) {
        return nullptr;
    }
    // The mask is added to what other watches of the same directory asked for; each listener filters its own.
    const std::uint32_t mask =
        events | IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR | IN_MASK_ADD | IN_EXCL_UNLINK;
    const int number = inotify_add_watch(m_descriptor.value(), directory.c_str(), mask);
    if (number < 0) {
        return nullptr;
    }
    auto listener = std::make_shared<InotifyListener>(InotifyListener{events, true, std::move(changed), {}});
    m_directories[number].push_back(listener);
    return listener;
}

void InotifyQueue::remove(const std::shared_ptr<InotifyListener>& listener) {
    for (auto directory = m_directories.begin(); directory != m_directories.end(); ++directory) {
        if (std::erase(directory->second, listener) > 0) {
            if (directory->second.empty()) {
                inotify_rm_watch(m_descriptor.value(), directory->first);
                m_directories.erase(directory);
            }
            return;
        }
    }
}

/// Takes everything out of the queue first, so that each watch is called once however much happened.
void InotifyQueue::drain() {
    // Far more than a queue of the usual length holds; a flood beyond it waits for the loop's next turn.
    constexpr int mostReads = 256;
    alignas(inotify_event) char buffer[16384];
    Listeners told;
    for (int count = 0; count < mostReads; ++count) {
        const ssize_t length = read(m_descriptor.value(), buffer, sizeof buffer);
        if (length <= 0) {
            break;
        }
        for (ssize_t offset = 0; offset < length;) {
            const auto* event = reinterpret_cast<const inotify_event*>(buffer + offset);
            take(*event, told);
            offset += static_cast<ssize_t>(sizeof *event + event->len);
        }
    }
    // From here on a callback may end any watch, or the queue itself.
    for (const auto& listener : told) {
        const DirectoryNews news = std::exchange(listener->news, {});
        if (const auto changed = listener->changed) {
            changed(news);
        }
    }
}

void InotifyQueue::take(const inotify_event& event, Listeners& told) {
    if ((event.mask & IN_Q_OVERFLOW) != 0) {
        takeOverflow(told);
        return;
    }
    if ((event.mask & endOfDirectory) != 0) {
        end(event.wd, told);
        return;
    }
    const auto directory = m_directories.find(event.wd);
    if (directory == m_directories.end()) {
        return;
    }
    // Without a name it is about the directory itself.
    const std::string name = event.len > 0 ? std::string(event.name) : std::string();
    for (const auto& listener : directory->second) {
        if ((event.mask & listener->events) != 0) {
            tell(listener, name, told);
        }
    }
}

void InotifyQueue::tell(const std::shared_ptr<InotifyListener>& listener, const std::string& name,
                        Listeners& told) {
    // More names than that are a reason to look at everything.
    constexpr std::size_t mostNames = 256;
    std::vector<std::string>& names = listener->news.names;
    if (name.empty() || names.size() >= mostNames) {
        tellOfMore(listener, told);
        return;
    }
    // A file that is written to makes event after event.
    if (std::ranges::find(names, name) == names.end()) {
        names.push_back(name);
    }
    addOnce(told, listener);
}

void InotifyQueue::tellOfMore(const std::shared_ptr<InotifyListener>& listener, Listeners& told) {
    listener->news.isComplete = false;
    addOnce(told, listener);
}

void InotifyQueue::takeOverflow(Listeners& told) const {
    qCInfo(Logs::system, "the queue of directory watches ran over: everything is looked at");
    for (const auto& [number, listeners] : m_directories) {
        for (const auto& listener : listeners) {
            tellOfMore(listener, told);
        }
    }
}

void InotifyQueue::end(int directory, Listeners& told) {
    const auto found = m_directories.find(directory);
    if (found == m_directories.end()) {
        return;
    }
    for (const auto& listener : found->second) {
        listener->isActive = false;
        tellOfMore(listener, told);
    }
    m_directories.erase(found);
    // A directory that was moved is still watched by the system, under a path that is no longer the asked
    // one.
    inotify_rm_watch(m_descriptor.value(), directory);
}

} // namespace veslora
