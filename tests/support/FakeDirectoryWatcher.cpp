// SPDX-License-Identifier: MIT
#include "tests/support/FakeDirectoryWatcher.h"

#include <utility>

namespace veslora {

/// Owns its record; the watcher only looks at it.
class FakeDirectoryWatcher::Watch final : public DirectoryWatch {
  public:
    explicit Watch(std::shared_ptr<Record> record) : m_record(std::move(record)) {}
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;
    ~Watch() override {
        m_record->isActive = false;
        m_record->changed = nullptr;
    }

    [[nodiscard]] bool isActive() const override { return m_record->isActive; }

  private:
    std::shared_ptr<Record> m_record;
};

std::unique_ptr<DirectoryWatch> FakeDirectoryWatcher::watch(const std::string& directory,
                                                            DirectoryChanges changes,
                                                            std::function<void()> changed) {
    if (beforeWatch) {
        beforeWatch(directory);
    }
    return add({directory, changes, [changed = std::move(changed)](const auto&) { changed(); }});
}

std::unique_ptr<DirectoryWatch>
FakeDirectoryWatcher::watchFiles(const std::string& directory,
                                 std::function<void(const DirectoryNews&)> changed) {
    return add({directory, std::nullopt, std::move(changed)});
}

std::unique_ptr<DirectoryWatch> FakeDirectoryWatcher::add(Record record) {
    if (refused.contains(record.directory)) {
        return nullptr;
    }
    auto shared = std::make_shared<Record>(std::move(record));
    m_records.push_back(shared);
    return std::make_unique<Watch>(std::move(shared));
}

void FakeDirectoryWatcher::tell(const std::string& directory, const DirectoryNews& news) {
    for (const auto& record : recordsOf(directory)) {
        if (const auto changed = record->changed; record->isActive && !record->changes) {
            changed(news);
        }
    }
}

void FakeDirectoryWatcher::fire(const std::string& directory, DirectoryChanges kind) {
    for (const auto& record : recordsOf(directory)) {
        const bool isMeant = kind == DirectoryChanges::movedInto || record->changes == DirectoryChanges::any;
        // A copy, since a callback may end its own watch; and an earlier one may have ended this.
        if (const auto changed = record->changed; record->isActive && record->changes && isMeant) {
            changed({});
        }
    }
}

void FakeDirectoryWatcher::end(const std::string& directory) {
    for (const auto& record : recordsOf(directory)) {
        if (const auto changed = record->changed; std::exchange(record->isActive, false)) {
            changed({.names = {}, .isComplete = false});
        }
    }
}

std::vector<std::string> FakeDirectoryWatcher::watched() const {
    std::set<std::string> directories;
    for (const auto& weak : m_records) {
        if (const auto record = weak.lock(); record && record->isActive) {
            directories.insert(record->directory);
        }
    }
    return {directories.begin(), directories.end()};
}

std::size_t FakeDirectoryWatcher::count(const std::string& directory) const {
    return recordsOf(directory).size();
}

std::vector<std::shared_ptr<FakeDirectoryWatcher::Record>>
FakeDirectoryWatcher::recordsOf(const std::string& directory) const {
    std::vector<std::shared_ptr<Record>> found;
    for (const auto& weak : m_records) {
        if (auto record = weak.lock(); record && record->isActive && record->directory == directory) {
            found.push_back(std::move(record));
        }
    }
    return found;
}

} // namespace veslora
