// SPDX-License-Identifier: MIT
// Whatever happens to transcripts, and however it is noticed: following them comes to the same tally as
// reading them all.
#include "tests/VesloraUI/Claude/Transcripts/TranscriptWorld.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <map>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace veslora {
namespace {

using test::TranscriptWorld;
using Follower = TranscriptFollower<ClaudeUsageTally>;

std::string isoTime(Timestamp time) {
    constexpr Timestamp start = 1'799'712'000; // 2027-01-12T00:00:00Z
    const auto seconds = static_cast<int>(time - start);
    char text[32];
    std::snprintf(text, sizeof text, "2027-01-%02dT%02d:%02d:%02dZ", 12 + seconds / 86400,
                  seconds / 3600 % 24, seconds / 60 % 60, seconds % 60);
    return text;
}

/// The rules by the letter: at every look all files are listed and each one is read from its position.
class PlainReading {
  public:
    explicit PlainReading(TranscriptWorld& world)
        : m_world(world), m_tally(world.time.now(), test::fixedCalendar()) {}

    void refresh() {
        m_tally.roll(m_world.time.now());
        const auto listing =
            TranscriptReader::transcripts(m_world.files, TranscriptWorld::folder, m_tally.day());
        for (const Transcript& transcript : listing.transcripts) {
            read(transcript.path, *m_world.files.text(transcript.path), transcript.stat.inode);
        }
    }
    [[nodiscard]] ClaudeTokenTotals totals() const { return m_tally.totals(); }

  private:
    void read(const std::string& path, const std::string& text, std::uint64_t inode) {
        auto& [offset, file] = m_positions[path];
        if (file != inode || offset > text.size()) {
            offset = 0;
        }
        file = inode;
        for (std::size_t end = text.find('\n', offset); end != std::string::npos;
             end = text.find('\n', offset)) {
            m_tally.add(std::string_view(text).substr(offset, end - offset));
            offset = end + 1;
        }
    }

    TranscriptWorld& m_world;
    ClaudeUsageTally m_tally;
    std::map<std::string, std::pair<std::size_t, std::uint64_t>> m_positions;
};

/// Does one thing after the other to transcripts. It knows what each file holds and where a line is
/// unfinished.
class Agents {
  public:
    /// If `keepsLines`, no line that was complete once ever vanishes.
    Agents(TranscriptWorld& world, unsigned seed, bool keepsLines)
        : m_world(world), m_random(seed), m_keepsLines(keepsLines) {}

    unsigned pick(unsigned count) { return static_cast<unsigned>(m_random() % count); }

    /// The last things done, for readers of a failure.
    [[nodiscard]] std::string history() const {
        std::string text;
        for (std::size_t i = m_history.size() - std::min<std::size_t>(m_history.size(), 20);
             i < m_history.size(); ++i) {
            text += m_history[i] + "\n";
        }
        return text;
    }
    void note(const std::string& text) { m_history.push_back(text); }

    void act() {
        const unsigned kind = pick(20);
        if (m_files.empty() || kind == 0) {
            begin(freshName());
            return;
        }
        const std::string name =
            std::next(m_files.begin(), pick(static_cast<unsigned>(m_files.size())))->first;
        note(std::to_string(kind) + " " + name);
        switch (kind) {
        case 1:
            return replace(name);
        case 2:
            return moveTo(name, m_keepsLines ? freshName(places.size() - unseen) : freshName());
        case 3:
            return m_world.touch(name);
        case 4:
            return cut(name);
        case 5:
            return m_world.pass(pick(3) == 0 ? 30'000 : 10);
        case 6:
            return loseNews(name);
        case 7:
            return toggleWatches();
        case 8:
            return moveDirectory();
        case 9:
            return m_keepsLines ? append(name) : vanish(name);
        default:
            return append(name);
        }
    }

  private:
    struct File {
        std::string text;
        std::string rest; ///< what an unfinished line still lacks
        int number = 0;   ///< of the file's own messages
    };

    /// Where transcripts lie. The last ones are too deep or hidden, where none is seen.
    static constexpr std::array places = {"",     "p/",     "p/s/",     "p/s/sub/",      "q/",
                                          "q/t/", "q/t/u/", "q/t/u/v/", "deep/a/b/c/d/", ".hidden/"};
    static constexpr std::size_t unseen = 2;

    std::string freshName(std::size_t count = places.size()) {
        return places.at(pick(static_cast<unsigned>(count))) + std::to_string(m_next++) + ".jsonl";
    }
    void begin(const std::string& name) {
        m_files[name].number = m_next++;
        append(name);
    }
    /// A line of any kind. Messages of a file's own change their counts; those that several files hold don't.
    std::string line(const File& file) {
        const std::string now = isoTime(m_world.time.now());
        const std::string own = "f" + std::to_string(file.number) + "m" + std::to_string(pick(4));
        switch (pick(8)) {
        case 0:
            return "{\"type\":\"user\",\"text\":\"no use\"}\n";
        case 1:
            return test::usageLine(own, pick(50), isoTime(m_world.time.now() - 86'400));
        case 2:
            return "{\"usage\" broken\n";
        case 3: {
            const unsigned shared = pick(30);
            return test::usageLine("shared" + std::to_string(shared), std::int64_t{100} * shared, now);
        }
        case 4:
            return test::usageLine(own + "\xE9", pick(50), now);
        default:
            return test::usageLine(own, pick(50), now);
        }
    }
    void append(const std::string& name) {
        File& file = m_files.at(name);
        std::string added = std::exchange(file.rest, {});
        for (unsigned count = pick(3); count > 0 || added.empty(); count = count > 0 ? count - 1 : 0) {
            added += line(file);
        }
        if (pick(3) == 0) {
            const std::size_t kept =
                added.size() - 1 - pick(static_cast<unsigned>(std::min<std::size_t>(added.size(), 40)));
            file.rest = added.substr(kept);
            added.resize(kept);
        }
        file.text += added;
        note(added);
        m_world.append(name, added);
    }
    void replace(const std::string& name) {
        File& file = m_files.at(name);
        if (!m_keepsLines && pick(2) == 0) {
            file = {line(file), {}, m_next++};
        } else {
            file.text += std::exchange(file.rest, {}) + (pick(2) == 0 ? line(file) : "");
        }
        m_world.replace(name, file.text);
    }
    void moveTo(const std::string& name, const std::string& target) {
        m_world.move(name, target);
        m_files[target] = m_files.at(name);
        m_files.erase(name);
    }
    /// Only the unfinished last line, or anything at all. What is cut off is never written again.
    void cut(const std::string& name) {
        File& file = m_files.at(name);
        const std::size_t end = file.text.rfind('\n');
        const std::size_t whole = end == std::string::npos ? 0 : end + 1;
        file.text.resize(m_keepsLines ? whole : pick(static_cast<unsigned>(file.text.size() + 1)));
        file.rest.clear();
        if (!file.text.empty() && file.text.back() != '\n') {
            file.rest = "\n";
        }
        m_world.rewrite(name, file.text);
    }
    void vanish(const std::string& name) {
        m_world.remove(name);
        m_files.erase(name);
    }
    void loseNews(const std::string& name) {
        m_world.isDeaf = true;
        append(name);
        m_world.isDeaf = false;
        m_world.overflow();
    }
    /// Watches run out, which is not noticed before some directory is new, and are there again.
    void toggleWatches() {
        if (m_world.watcher.refused.empty()) {
            m_world.watcher.refused = {TranscriptWorld::path("p/s"), TranscriptWorld::path("moved0"),
                                       TranscriptWorld::path("q/t")};
        } else {
            m_world.watcher.refused.clear();
        }
    }
    void moveDirectory() {
        const std::string from = pick(2) == 0 ? "p" : "q";
        if (!m_world.files.exists(TranscriptWorld::path(from))) {
            return;
        }
        const std::string to = "moved" + std::to_string(m_moves++);
        m_world.move(from, to);
        std::map<std::string, File> moved;
        for (auto& [name, file] : m_files) {
            moved[name.starts_with(from + "/") ? to + name.substr(1) : name] = std::move(file);
        }
        m_files = std::move(moved);
    }

    TranscriptWorld& m_world;
    std::mt19937 m_random;
    bool m_keepsLines;
    std::map<std::string, File> m_files;
    int m_next = 0;
    int m_moves = 0;
    std::vector<std::string> m_history;
};

ClaudeTokenTotals coldTotals(TranscriptWorld& world) {
    FakeDirectoryWatcher watcher;
    Follower cold({world.time, world.files, watcher}, TranscriptWorld::folder, {ClaudeUsageLine::marker},
                  ClaudeUsageTally(world.time.now(), test::fixedCalendar()), [] {});
    cold.load();
    world.time.runBackground();
    world.time.runBackground();
    return cold.tally().totals();
}

TEST(TranscriptProperty, FollowingEqualsLookingAtEverythingEachTime) {
    std::int64_t most = 0;
    for (unsigned seed = 0; seed < 60; ++seed) {
        TranscriptWorld world;
        Agents agents(world, seed, false);
        for (unsigned count = agents.pick(8); count > 0; --count) {
            agents.act();
        }
        Follower follower(world.seams(), TranscriptWorld::folder, {ClaudeUsageLine::marker},
                          ClaudeUsageTally(world.time.now(), test::fixedCalendar()), [] {});
        follower.load();
        world.settle(follower);
        PlainReading plain(world);
        plain.refresh();
        for (int step = 0; step < 60; ++step) {
            agents.act();
            world.settle(follower);
            plain.refresh();
            ASSERT_EQ(follower.tally().totals(), plain.totals())
                << "seed " << seed << ", step " << step << "\n"
                << agents.history();
        }
        most = std::max(most, plain.totals().total());
    }
    EXPECT_GT(most, 5'000);
}

TEST(TranscriptProperty, FollowingEqualsAColdRead) {
    std::int64_t most = 0;
    for (unsigned seed = 0; seed < 60; ++seed) {
        TranscriptWorld world;
        Agents agents(world, seed, true);
        for (unsigned count = agents.pick(8); count > 0; --count) {
            agents.act();
        }
        Follower follower(world.seams(), TranscriptWorld::folder, {ClaudeUsageLine::marker},
                          ClaudeUsageTally(world.time.now(), test::fixedCalendar()), [] {});
        follower.load();
        for (int step = 0; step < 80; ++step) {
            agents.act();
            const unsigned look = agents.pick(6);
            agents.note("look " + std::to_string(look));
            switch (look) {
            case 0:
                follower.refresh();
                break;
            case 1:
                world.pass(2);
                break;
            case 2:
                world.time.runBackground();
                break;
            case 3:
                world.settle(follower);
                ASSERT_EQ(follower.tally().totals(), coldTotals(world))
                    << "seed " << seed << ", step " << step << "\n"
                    << agents.history();
                break;
            default:
                break;
            }
        }
        world.settle(follower);
        most = std::max(most, follower.tally().totals().total());
    }
    EXPECT_GT(most, 5'000);
}

} // namespace
} // namespace veslora
