// SPDX-License-Identifier: MIT
// Knows which transcripts below a folder may have something new, without walking the folder: it watches every
// directory in it. Where watches run out or tell too little it falls back to walks, in the background. Main
// thread only.
#pragma once

#include "VesloraUI/Claude/Transcripts/TranscriptReader.h"
#include "VesloraUI/Platform/DirectoryWatcher.h"
#include "VesloraUI/Platform/Scheduler.h"

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace veslora {

class TranscriptFolder {
  public:
    /// `changed` is called when there is something to take, except from within `take`.
    TranscriptFolder(Scheduler& scheduler, Files& files, DirectoryWatcher& watcher, std::string path,
                     std::function<void()> changed);
    ~TranscriptFolder();
    TranscriptFolder(const TranscriptFolder&) = delete;
    TranscriptFolder& operator=(const TranscriptFolder&) = delete;

    /// Lets the next `take` begin a walk if some directory can't be watched. For calls that come now and
    /// then, not for those that answer a change.
    void lookWhereNothingIsHeard();

    /// The transcripts changed at or after `since` of which something was heard since the last call. Begins a
    /// walk if one is due, whose findings a later call gives.
    [[nodiscard]] std::vector<Transcript> take(Timestamp since);

    /// Lets a later call of `take` give that transcript again.
    void putBack(const std::string& path) { m_changed.insert(path); }

    [[nodiscard]] const std::string& path() const { return m_path; }

  private:
    struct Walk;
    void lookAt(const std::string& directory) { m_toWalk.insert(directory); }
    void startWalk(Timestamp since);
    void takeWalk(Walk& walk);
    [[nodiscard]] bool watchNew(const std::vector<std::string>& directories);
    void hear(const std::string& directory, const DirectoryNews& news);
    void hearOf(const std::string& path);
    void forget(const std::string& directory);
    [[nodiscard]] int levelOf(const std::string& directory) const;
    [[nodiscard]] bool isInsideOneToWalk(const std::string& directory) const;

    Scheduler& m_scheduler;
    Files& m_files;
    DirectoryWatcher& m_watcher;
    std::string m_path;
    std::function<void()> m_onChange;
    std::map<std::string, std::unique_ptr<DirectoryWatch>> m_watches; ///< by directory
    std::vector<Transcript> m_walked;  ///< what walks found and nobody took yet
    std::set<std::string> m_changed;   ///< what was heard of since
    std::set<std::string> m_toWalk;    ///< directories that were not looked at since they were last watched
    std::set<std::string> m_unwatched; ///< directories that can't be watched
    Timestamp m_since = 0;
    Task m_walk;
};

} // namespace veslora
