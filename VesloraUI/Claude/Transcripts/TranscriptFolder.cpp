// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Transcripts/TranscriptFolder.h"

#include "VesloraUI/Platform/Logs.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace veslora {

/// What a walk in the background found. The thread that walks and the main thread hold it one after the
/// other.
struct TranscriptFolder::Walk {
    std::map<std::string, int> levels; ///< the directories to walk, and how deep each one lies
    Timestamp since = 0;
    std::map<std::string, TranscriptListing> found; ///< by the directory that was walked
};

TranscriptFolder::TranscriptFolder(Scheduler& scheduler, Files& files, DirectoryWatcher& watcher,
                                   std::string path, std::function<void()> changed)
    : m_scheduler(scheduler), m_files(files), m_watcher(watcher), m_path(std::move(path)),
      m_onChange(std::move(changed)), m_toWalk{m_path} {}

TranscriptFolder::~TranscriptFolder() = default;

void TranscriptFolder::lookWhereNothingIsHeard() {
    if (!m_unwatched.empty()) {
        lookAt(m_path);
    }
}

std::vector<Transcript> TranscriptFolder::take(Timestamp since) {
    // Files of an earlier day, which did not count until now, were not heard of when they changed.
    if (since < m_since) {
        lookAt(m_path);
    }
    m_since = since;
    std::vector<Transcript> taken = std::exchange(m_walked, {});
    for (const std::string& path : std::exchange(m_changed, {})) {
        const auto stat = m_files.stat(path, Links::refuse);
        if (stat && TranscriptReader::isTranscript(path, *stat, since)) {
            taken.push_back({path, *stat});
        }
    }
    // Asked first, since a folder that is not there would cost a walk at every look.
    const auto folder =
        m_toWalk.empty() || m_walk.isActive() ? std::nullopt : m_files.stat(m_path, Links::follow);
    if (folder && folder->isDirectory) {
        startWalk(since);
    }
    return taken;
}

void TranscriptFolder::startWalk(Timestamp since) {
    auto walk = std::make_shared<Walk>();
    walk->since = since;
    for (const std::string& directory : m_toWalk) {
        if (!isInsideOneToWalk(directory)) {
            walk->levels.emplace(directory, levelOf(directory));
        }
    }
    m_toWalk.clear();
    m_walk = m_scheduler.background(
        [walk, &files = m_files] {
            for (const auto& [directory, level] : walk->levels) {
                walk->found[directory] = TranscriptReader::transcripts(files, directory, walk->since, level);
            }
        },
        [this, walk] { takeWalk(*walk); });
}

bool TranscriptFolder::isInsideOneToWalk(const std::string& directory) const {
    for (std::size_t slash = directory.rfind('/'); slash != std::string::npos && slash >= m_path.size();
         slash = slash == 0 ? std::string::npos : directory.rfind('/', slash - 1)) {
        if (m_toWalk.contains(directory.substr(0, slash))) {
            return true;
        }
    }
    return false;
}

/// A directory that was not watched while it was walked may have changed behind the walk's back, and so it is
/// walked once more now that it is.
void TranscriptFolder::takeWalk(Walk& walk) {
    const std::size_t known = m_walked.size();
    for (auto& [directory, listing] : walk.found) {
        if (directory == m_path) {
            m_unwatched.clear();
        }
        if (watchNew(listing.directories)) {
            lookAt(directory);
        }
        std::ranges::move(listing.transcripts, std::back_inserter(m_walked));
    }
    qCInfo(Logs::transcripts, "walked %zu folders below %s: %zu transcripts", walk.found.size(),
           Logs::place(m_path).c_str(), m_walked.size() - known);
    if (!m_walked.empty() || !m_toWalk.empty()) {
        m_onChange();
    }
}

/// True if any of them was not watched before and is now.
bool TranscriptFolder::watchNew(const std::vector<std::string>& directories) {
    bool isAnyNew = false;
    for (const std::string& path : directories) {
        auto& [directory, watch] = *m_watches.try_emplace(path).first;
        if (watch && watch->isActive()) {
            continue;
        }
        // OPTIMIZATION: the name beside the watch serves it, as long as it lives. One of its own for each
        // took 160 KB with 1,359 directories. What is heard may end the watch, and so a copy goes along.
        watch = m_watcher.watchFiles(directory, [this, &name = directory](const DirectoryNews& news) {
            hear(std::string(name), news);
        });
        if (watch) {
            isAnyNew = true;
            m_unwatched.erase(directory);
        } else {
            m_unwatched.insert(directory);
        }
    }
    return isAnyNew;
}

void TranscriptFolder::hear(const std::string& directory, const DirectoryNews& news) {
    const auto watch = m_watches.find(directory);
    const bool isGone = watch == m_watches.end() || !watch->second || !watch->second->isActive();
    if (isGone && directory != m_path) {
        forget(directory);
    } else if (isGone || !news.isComplete) {
        // After an overflow anything may have happened, also in the directories below.
        lookAt(directory);
    }
    for (const std::string& name : news.names) {
        if (!name.starts_with('.')) {
            hearOf(directory + "/" + name);
        }
    }
    if (!m_changed.empty() || !m_toWalk.empty()) {
        m_onChange();
    }
}

void TranscriptFolder::hearOf(const std::string& path) {
    if (TranscriptReader::isTranscriptName(path)) {
        m_changed.insert(path);
    }
    const auto stat = m_files.stat(path, Links::refuse);
    if (!stat || !stat->isDirectory) {
        // Its place may have been a directory's that was moved away.
        if (m_watches.contains(path)) {
            forget(path);
        }
    } else if (levelOf(path) < TranscriptReader::deepestLevel) {
        forget(path);
        lookAt(path);
    }
}

/// Ends the watches of a directory that is no longer there and of all that lay in it.
void TranscriptFolder::forget(const std::string& directory) {
    const auto isInside = [&](const std::string& other) {
        return other == directory || other.starts_with(directory + "/");
    };
    std::erase_if(m_watches, [&](const auto& watch) { return isInside(watch.first); });
    std::erase_if(m_unwatched, isInside);
}

int TranscriptFolder::levelOf(const std::string& directory) const {
    return static_cast<int>(
        std::count(directory.begin() + static_cast<std::ptrdiff_t>(m_path.size()), directory.end(), '/'));
}

} // namespace veslora
