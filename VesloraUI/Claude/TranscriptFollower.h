// SPDX-License-Identifier: MIT
// Keeps a tally of what today's transcripts say: reads them once, and afterwards only what they grew by.
// Whole files and large growth are read in the background, into a tally of their own that is merged here;
// what an agent appends now and then is read at once. Main thread only.
#pragma once

#include "VesloraUI/Claude/TranscriptFolder.h"

#include <atomic>
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
///   bool merge(const Tally& later);     takes what another tally counted after this one; false, and nothing
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
        auto batch = std::make_shared<Batch>(std::move(m_tally));
        const Timestamp day = batch->tally.day();
        start(batch, [&files = m_files, folder = m_folder.path(), day](Batch& work) {
            for (Transcript& transcript : TranscriptReader::transcripts(files, folder, day).transcripts) {
                work.paths.push_back(std::move(transcript.path));
            }
        });
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
    /// Work in the background. The thread that does it and the main thread hold it one after the other.
    struct Batch {
        explicit Batch(Tally fresh) : tally(std::move(fresh)) {}
        std::vector<std::string> paths;
        std::map<std::string, std::optional<TranscriptPosition>> positions; ///< where to begin, then to go on
        Tally tally;
        std::atomic<bool> isCancelled = false;
    };
    struct Work {
        std::shared_ptr<Batch> batch;
        Task task;
    };

    void follow() {
        m_refresh.cancel();
        if (!m_isLoaded) {
            return;
        }
        m_tally.roll(m_scheduler.now());
        std::vector<std::string> paths;
        TranscriptReader reader(m_files, m_markers);
        for (const Transcript& transcript : m_folder.take(m_tally.day())) {
            if (m_pending.contains(transcript.path)) {
                m_heardMeanwhile.insert(transcript.path);
            } else if (isLong(transcript)) {
                paths.push_back(transcript.path);
            } else if (isNew(transcript)) {
                readOn(reader, transcript.path);
            }
        }
        if (!paths.empty()) {
            auto batch = std::make_shared<Batch>(m_tally.emptied());
            batch->paths = std::move(paths);
            start(batch, {});
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

    [[nodiscard]] const TranscriptPosition* positionOf(const std::string& path) const {
        const auto found = m_positions.find(path);
        return found == m_positions.end() ? nullptr : &found->second;
    }

    /// Whether reading it is nothing to make the main thread wait for.
    [[nodiscard]] bool isLong(const Transcript& transcript) const {
        const TranscriptPosition* position = positionOf(transcript.path);
        const auto size = static_cast<std::uint64_t>(transcript.stat.size);
        if (!position) {
            return true;
        }
        const bool isSame = position->file == transcript.stat.inode && position->offset <= size;
        return size - (isSame ? position->offset : 0) > smallGrowth;
    }

    [[nodiscard]] bool isNew(const Transcript& transcript) const {
        const TranscriptPosition* position = positionOf(transcript.path);
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

    void start(const std::shared_ptr<Batch>& batch, std::function<void(Batch&)> prepare) {
        for (const std::string& path : batch->paths) {
            const TranscriptPosition* position = positionOf(path);
            batch->positions[path] = position ? std::optional(*position) : std::nullopt;
            m_pending.insert(path);
        }
        const int number = m_nextWork++;
        const auto work = [batch, &files = m_files, markers = m_markers, prepare = std::move(prepare)] {
            if (prepare) {
                prepare(*batch);
            }
            read(*batch, files, markers);
        };
        m_works[number] = {batch, m_scheduler.background(work, [this, number] { finish(number); })};
    }

    static void read(Batch& batch, Files& files, const std::vector<std::string_view>& markers) {
        TranscriptReader reader(files, markers, &batch.isCancelled);
        for (const std::string& path : batch.paths) {
            if (batch.isCancelled) {
                return;
            }
            std::optional<TranscriptPosition>& position = batch.positions[path];
            position =
                reader.usageLines(path, position, [&batch](std::string_view line) { batch.tally.add(line); });
        }
    }

    void finish(int number) {
        const std::shared_ptr<Batch> batch = m_works.at(number).batch;
        m_works.erase(number);
        // What was read before midnight passed over the lines of the new day.
        takePositions(*batch, m_isLoaded ? merge(batch->tally) : adopt(std::move(batch->tally)));
        follow();
        m_onChange();
    }

    [[nodiscard]] bool merge(const Tally& tally) {
        m_tally.roll(m_scheduler.now());
        return m_tally.merge(tally);
    }

    /// Moved, not merged: it holds every message of the day.
    [[nodiscard]] bool adopt(Tally&& tally) {
        m_isLoaded = true;
        m_tally = std::move(tally);
        const Tally asRead = m_tally.emptied();
        return merge(asRead);
    }

    void takePositions(const Batch& batch, bool areValid) {
        for (const std::string& path : batch.paths) {
            m_pending.erase(path);
            const auto& position = batch.positions.at(path);
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
    std::map<int, Work> m_works;
    int m_nextWork = 0;
    Task m_refresh;
    TranscriptFolder m_folder;
};

} // namespace veslora
