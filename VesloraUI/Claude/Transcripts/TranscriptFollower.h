// SPDX-License-Identifier: MIT
// Keeps a tally of what today's transcripts say: reads them once, and afterwards only what they grew by.
// Whole files and large growth are read in the background, into a tally of their own that is merged here;
// what an agent appends now and then is read at once. Main thread only.
#pragma once

#include "VesloraUI/Claude/Transcripts/TranscriptFolder.h"

#include <array>
#include <atomic>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace veslora {

/// What following transcripts needs of the machine.
struct TranscriptSeams {
    Scheduler& scheduler;
    Files& files;
    DirectoryWatcher& watcher;
};

/// `Tally` is a value with
///   void add(std::string_view line);    takes one line
///   bool merge(Tally&& later);          takes what another tally counted after this one; false, and nothing
///                                       taken, if it counted another day
///   Tally emptied() const;              the same day with nothing counted
///   void roll(Timestamp time);          begins anew if `time` lies on another day
///   Timestamp day() const;              when the counted day began
/// and may be filled on any thread.
template <class Tally>
class TranscriptFollower {
  public:
    /// More growth than that is read in the background, in bytes.
    static constexpr std::uint64_t smallGrowth = std::uint64_t{1} << 20;
    /// Seconds between hearing of a change and reading it, so that a burst of lines is read once.
    static constexpr double patience = 0.03;

    /// `changed` is called after the tally may have changed by itself, never from within a call to this.
    TranscriptFollower(const TranscriptSeams& seams, const std::string& folder,
                       std::vector<std::string_view> markers, Tally tally, std::function<void()> changed)
        : m_scheduler(seams.scheduler), m_files(seams.files), m_markers(std::move(markers)),
          m_tally(std::move(tally)), m_onChange(std::move(changed)),
          m_folder(seams.scheduler, seams.files, seams.watcher, folder, [this] { refreshSoon(); }) {}
    ~TranscriptFollower() {
        for (const auto& [number, work] : m_works) {
            work.batch->isCancelled = true;
        }
    }
    TranscriptFollower(const TranscriptFollower&) = delete;
    TranscriptFollower& operator=(const TranscriptFollower&) = delete;

    /// Begins the first read of today's transcripts. Called once.
    void load() {
        auto listing = std::make_shared<TranscriptListing>();
        m_listing = m_scheduler.background(
            [listing, &files = m_files, folder = m_folder.path(), day = m_tally.day()] {
                *listing = TranscriptReader::transcripts(files, folder, day);
            },
            [this, listing] { start(std::move(listing->transcripts)); });
    }

    /// Reads what was appended since, and begins to read what is new. Does nothing before the first read has
    /// ended.
    void refresh() {
        for (const std::string& path : std::exchange(m_failed, {})) {
            m_folder.putBack(path);
        }
        m_folder.lookWhereNothingIsHeard();
        follow();
    }

    /// Meaningless before the first read has ended.
    [[nodiscard]] const Tally& tally() const { return m_tally; }
    [[nodiscard]] bool isLoaded() const { return m_isLoaded; }

  private:
    /// Some of the files of a batch, which one thread reads.
    struct Share {
        std::vector<std::string> paths;
        std::map<std::string, std::optional<TranscriptPosition>> positions; ///< where to begin, then to go on
        std::optional<Tally> tally;
    };
    /// Work in the background. Its threads hold a share each, then the last of them all, and then the main
    /// thread.
    struct Batch {
        std::array<Share, 2> shares;
        std::atomic<int> working = 1;       ///< shares that are not read yet
        std::atomic<bool> isJoined = false; ///< the first share holds all, and is the main thread's
        std::atomic<bool> isCancelled = false;
    };
    struct Work {
        std::shared_ptr<Batch> batch;
        std::array<Task, 2> tasks;
    };

    void follow() {
        m_refresh.cancel();
        if (!m_isLoaded) {
            return;
        }
        m_tally.roll(m_scheduler.now());
        std::vector<Transcript> longOnes;
        TranscriptReader reader(m_files, m_markers);
        for (const Transcript& transcript : m_folder.take(m_tally.day())) {
            if (m_pending.contains(transcript.path)) {
                m_heardMeanwhile.insert(transcript.path);
            } else if (isLong(transcript)) {
                longOnes.push_back(transcript);
            } else if (isNew(transcript)) {
                readOn(reader, transcript.path);
            }
        }
        if (!longOnes.empty()) {
            start(std::move(longOnes));
        }
    }

    void refreshSoon() {
        if (m_isLoaded && !m_refresh.isActive()) {
            m_refresh = m_scheduler.after(patience, [this] {
                follow();
                m_onChange();
            });
        }
    }

    [[nodiscard]] const TranscriptPosition* knownPosition(const std::string& path) const {
        const auto found = m_positions.find(path);
        return found == m_positions.end() ? nullptr : &found->second;
    }

    /// Whether reading it is nothing to make the main thread wait for.
    [[nodiscard]] bool isLong(const Transcript& transcript) const {
        const TranscriptPosition* position = knownPosition(transcript.path);
        const auto size = static_cast<std::uint64_t>(transcript.stat.size);
        if (!position) {
            return true;
        }
        const bool isSame = position->file == transcript.stat.inode && position->offset <= size;
        return size - (isSame ? position->offset : 0) > smallGrowth;
    }

    [[nodiscard]] bool isNew(const Transcript& transcript) const {
        const TranscriptPosition* position = knownPosition(transcript.path);
        return !position || position->file != transcript.stat.inode ||
               position->offset != static_cast<std::uint64_t>(transcript.stat.size);
    }

    void readOn(TranscriptReader& reader, const std::string& path) {
        const auto position = reader.usageLines(path, m_positions.at(path),
                                                [this](std::string_view line) { m_tally.add(line); });
        if (position) {
            m_positions[path] = *position;
        } else {
            m_failed.insert(path);
        }
    }

    /// OPTIMIZATION: two threads share the bytes, in the order of the files, so that the outcome is that of
    /// one. The first read of 1.2 GiB took 0.60 s instead of 1.10 s.
    void start(std::vector<Transcript> transcripts) {
        auto batch = std::make_shared<Batch>();
        std::int64_t bytes = 0;
        for (const Transcript& transcript : transcripts) {
            bytes += transcript.stat.size;
        }
        std::int64_t shared = 0;
        for (Transcript& transcript : transcripts) {
            Share& share = batch->shares[shared < bytes / 2 ? 0 : 1];
            shared += transcript.stat.size;
            const TranscriptPosition* position = knownPosition(transcript.path);
            share.positions[transcript.path] = position ? std::optional(*position) : std::nullopt;
            m_pending.insert(transcript.path);
            share.paths.push_back(std::move(transcript.path));
        }
        const int number = m_nextWork++;
        Work& work = m_works[number];
        work.batch = batch;
        const std::size_t count = batch->shares[1].paths.empty() ? 1 : 2;
        batch->working = static_cast<int>(count);
        for (Share& share : batch->shares) {
            share.tally = m_tally.emptied();
        }
        for (std::size_t index = 0; index < count; ++index) {
            work.tasks[index] = m_scheduler.background(
                [batch, index, &files = m_files, markers = m_markers] {
                    read(batch->shares[index], batch->isCancelled, files, markers);
                    if (--batch->working == 0) {
                        join(*batch);
                        batch->isJoined = true;
                    }
                },
                [this, number] { finish(number); });
        }
    }

    static void read(Share& share, const std::atomic<bool>& isCancelled, Files& files,
                     const std::vector<std::string_view>& markers) {
        TranscriptReader reader(files, markers, &isCancelled);
        for (const std::string& path : share.paths) {
            if (isCancelled) {
                return;
            }
            std::optional<TranscriptPosition>& position = share.positions[path];
            position = reader.usageLines(path, position,
                                         [&share](std::string_view line) { share.tally->add(line); });
        }
    }

    /// The first share then holds all.
    static void join(Batch& batch) {
        Share& all = batch.shares[0];
        Share& later = batch.shares[1];
        static_cast<void>(all.tally->merge(std::move(*later.tally)));
        later.tally.reset();
        all.positions.merge(later.positions);
    }

    /// Called for each share, the last time when all are joined; what would come after is cancelled with the
    /// work.
    void finish(int number) {
        const std::shared_ptr<Batch> batch = m_works.at(number).batch;
        if (!batch->isJoined) {
            return;
        }
        Share& all = batch->shares[0];
        // What was read before midnight passed over the lines of the new day.
        takePositions(all.positions,
                      m_isLoaded ? merge(std::move(*all.tally)) : adopt(std::move(*all.tally)));
        m_works.erase(number);
        follow();
        m_onChange();
    }

    [[nodiscard]] bool merge(Tally&& tally) {
        m_tally.roll(m_scheduler.now());
        return m_tally.merge(std::move(tally));
    }

    /// Moved, not merged: it holds every message of the day.
    [[nodiscard]] bool adopt(Tally&& tally) {
        m_isLoaded = true;
        m_tally = std::move(tally);
        return merge(m_tally.emptied());
    }

    void takePositions(const std::map<std::string, std::optional<TranscriptPosition>>& positions,
                       bool areValid) {
        for (const auto& [path, position] : positions) {
            m_pending.erase(path);
            if (!position) {
                m_failed.insert(path);
            } else if (areValid) {
                m_positions[path] = *position;
            }
            if (!areValid || m_heardMeanwhile.erase(path) > 0) {
                m_folder.putBack(path);
            }
        }
    }

    Scheduler& m_scheduler;
    Files& m_files;
    std::vector<std::string_view> m_markers;
    Tally m_tally;
    bool m_isLoaded = false;
    std::function<void()> m_onChange;
    std::unordered_map<std::string, TranscriptPosition> m_positions;
    std::set<std::string> m_pending; ///< what is being read in the background
    std::set<std::string> m_heardMeanwhile;
    std::set<std::string> m_failed; ///< what could not be opened; the next refresh tries again
    Task m_listing;
    std::map<int, Work> m_works;
    int m_nextWork = 0;
    Task m_refresh;
    TranscriptFolder m_folder;
};

} // namespace veslora
