// SPDX-License-Identifier: MIT
// Keeps a tally of what today's transcripts say: reads them once, and afterwards only what they grew by.
// Whole files and large growth are read in the background, in batches whose tallies are merged here; what an
// agent appends now and then is read at once. Main thread only.
#pragma once

#include "VesloraUI/Claude/Transcripts/TranscriptBatch.h"
#include "VesloraUI/Claude/Transcripts/TranscriptFolder.h"

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
///   void roll(Timestamp time);          begins again if `time` lies on another day
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
    ~TranscriptFollower() = default;
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
    using Batch = TranscriptBatch<Tally>;

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

    void start(std::vector<Transcript> transcripts) {
        std::vector<typename Batch::File> files;
        for (Transcript& transcript : transcripts) {
            const TranscriptPosition* position = knownPosition(transcript.path);
            m_pending.insert(transcript.path);
            files.push_back({std::move(transcript.path), transcript.stat.size,
                             position ? std::optional(*position) : std::nullopt});
        }
        const int number = m_nextBatch++;
        m_batches[number] = std::make_unique<Batch>(
            m_scheduler, m_files, m_markers, std::move(files), m_tally.emptied(),
            [this, number](typename Batch::Outcome outcome) { finish(number, std::move(outcome)); });
    }

    void finish(int number, typename Batch::Outcome outcome) {
        // What was read before midnight passed over the lines of the new day.
        takePositions(outcome.positions,
                      m_isLoaded ? merge(std::move(outcome.tally)) : adopt(std::move(outcome.tally)));
        m_batches.erase(number);
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
    std::map<int, std::unique_ptr<Batch>> m_batches;
    int m_nextBatch = 0;
    Task m_refresh;
    TranscriptFolder m_folder;
};

} // namespace veslora
