// SPDX-License-Identifier: MIT
// A folder of transcripts in memory that its watchers hear of, as they would from the system: whatever a test
// does to a file is told to the watches of its directory.
#pragma once

#include "VesloraCore/Agents/Usage/ClaudeUsageTally.h"
#include "VesloraUI/Claude/Transcripts/TranscriptFollower.h"
#include "tests/support/FakeDirectoryWatcher.h"
#include "tests/support/FixedCalendar.h"
#include "tests/support/ManualScheduler.h"
#include "tests/support/MemoryFiles.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace veslora::test {

class TranscriptWorld {
  public:
    static constexpr auto folder = "/home/me/.claude/projects";

    MemoryFiles files;
    ManualScheduler time;
    FakeDirectoryWatcher watcher;
    bool isDeaf = false; ///< nothing is told, as when the system's queue ran over

    TranscriptWorld() { files.clock = time.now(); }

    [[nodiscard]] TranscriptSeams seams() { return {time, files, watcher}; }

    void pass(double seconds) {
        time.advance(seconds);
        files.clock = time.now();
    }
    void append(const std::string& name, const std::string& bytes) {
        makeRoom(name);
        files.append(path(name), bytes);
        tell(name);
    }
    void rewrite(const std::string& name, const std::string& bytes) {
        files.rewrite(path(name), bytes);
        tell(name);
    }
    /// A new file takes the name of the old one.
    void replace(const std::string& name, const std::string& bytes) {
        makeRoom(name);
        files.put(path(name), bytes);
        tell(name);
    }
    void touch(const std::string& name) {
        files.touch(path(name));
        tell(name);
    }
    void remove(const std::string& name) {
        files.removeTree(path(name));
        endWatches(name);
        tell(name);
    }
    void move(const std::string& from, const std::string& to) {
        makeRoom(to);
        files.move(path(from), path(to));
        endWatches(from);
        tell(from);
        tell(to);
    }
    /// The system's queue ran over, and nobody knows what was in it.
    void overflow() {
        for (const std::string& directory : watcher.watched()) {
            watcher.tell(directory, {.names = {}, .isComplete = false});
        }
    }

    /// Lets a follower come to rest: a list and a first read, a walk, one more for directories that were new
    /// to it, and a read of what they found.
    template <class Follower>
    void settle(Follower& follower) {
        constexpr int rounds = 7;
        for (int round = 0; round < rounds; ++round) {
            follower.refresh();
            time.runBackground();
        }
    }

    [[nodiscard]] static std::string path(const std::string& name) {
        return std::string(folder) + "/" + name;
    }

  private:
    /// Makes the directories above a name one by one, as each one's parent is told of it.
    void makeRoom(const std::string& name) {
        for (std::size_t slash = name.find('/'); slash != std::string::npos;
             slash = name.find('/', slash + 1)) {
            const std::string directory = name.substr(0, slash);
            if (!files.exists(path(directory))) {
                EXPECT_FALSE(files.makeDirectory(path(directory), 0700));
                tell(directory);
            }
        }
    }
    void tell(const std::string& name) {
        const std::string whole = path(name);
        const std::size_t slash = whole.rfind('/');
        if (!isDeaf) {
            watcher.tell(whole.substr(0, slash), {.names = {whole.substr(slash + 1)}});
        }
    }
    void endWatches(const std::string& name) {
        for (const std::string& directory : watcher.watched()) {
            if (directory == path(name) || directory.starts_with(path(name) + "/")) {
                watcher.end(directory);
            }
        }
    }
};

/// A line that counts `output` tokens for a message.
inline std::string usageLine(const std::string& message, std::int64_t output, const std::string& time) {
    return R"({"type":"assistant","timestamp":")" + time + R"(","requestId":"r","message":{"id":")" +
           message + R"(","usage":{"input_tokens":0,"output_tokens":)" + std::to_string(output) + "}}}\n";
}

} // namespace veslora::test
