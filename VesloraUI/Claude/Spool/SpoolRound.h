// SPDX-License-Identifier: MIT
// One look at a spool: what lay there, and how much of it was read. It is the main thread's and the
// background's by turns, never both at a time; only `cancel` may be called at any time.
#pragma once

#include "VesloraCore/Timestamp.h"
#include "VesloraUI/Platform/Files.h"

#include <atomic>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace veslora {

/// One file of a spool.
struct SpoolFile {
    std::string name;
    Timestamp time = 0; ///< its modification date
    ReadResult content; ///< an error for whatever is not a plain file of our own user, or is too large
};

/// Takes in what a file says. Called on the main thread.
using SpoolNews = std::function<void()>;

/// Understands a file and says what is to be taken in; null for nothing. Called on any thread, so it must
/// leave alone what belongs to the main thread.
using UnderstandSpoolFile = std::function<SpoolNews(const SpoolFile&)>;

/// How much is read in one go.
struct SpoolPortion {
    std::size_t files = 0;
    std::size_t bytes = 0;   ///< the file that reaches this is the last
    std::size_t longest = 0; ///< before a longer file the portion ends, unless that may be of any length
};

class SpoolRound {
  public:
    /// No real payload comes near this; one that does is not read.
    static constexpr std::size_t payloadCap = std::size_t{16} << 20;
    /// Files that could not be deleted, by name and stamp, so that they are not taken again and again.
    using Stuck = std::map<std::string, std::int64_t>;

    /// Leftovers of scripts that are older than `sweepBefore` are deleted as they are found; absent where
    /// there is no need to look.
    SpoolRound(std::unique_ptr<Folder> folder, UnderstandSpoolFile understand, Stuck stuck,
               std::optional<Timestamp> sweepBefore);

    /// Finds what there is, unless that is more than `most` files. Whether it was found.
    bool find(std::size_t most);
    /// Finds what there is, unless that is done, and reads a portion of it.
    void read(const SpoolPortion& portion);
    /// Makes `read` end early.
    void cancel() { m_isCancelled = true; }

    /// Takes in what was read, and deletes it.
    void takeIn();
    /// Everything was read.
    [[nodiscard]] bool isOver() const { return m_isFound && m_left.empty(); }
    /// What the next round has to know; the round is at its end then.
    [[nodiscard]] Stuck takeStuck() { return std::move(m_stuck); }

  private:
    struct Entry {
        std::int64_t nanoseconds = 0;
        std::string name;
        Timestamp time = 0;
    };
    struct Understood {
        Entry entry;
        SpoolNews news;
    };
    void findAll();
    void find(const std::vector<std::string>& names);
    void sweep(const std::string& name);
    /// What is to be taken in of the next file; absent if it is longer than `longest`, and not read then.
    [[nodiscard]] std::optional<SpoolNews> understandNext(std::size_t longest, std::size_t& bytes);

    std::unique_ptr<Folder> m_folder;
    UnderstandSpoolFile m_understand;
    Stuck m_stuck;
    std::optional<Timestamp> m_sweepBefore;
    std::deque<Entry> m_left; ///< in order
    std::vector<Understood> m_understood;
    bool m_isFound = false;
    std::atomic<bool> m_isCancelled = false;
};

} // namespace veslora
