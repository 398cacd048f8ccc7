// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Transcripts/TranscriptReader.h"
#include "tests/support/FaultInjectingFiles.h"
#include "tests/support/MemoryFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veslora {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr auto path = "/t/a.jsonl";
constexpr std::size_t megabyte = std::size_t{1} << 20;

class TranscriptReaderTest : public testing::Test {
  protected:
    /// The lines after `position`, which moves on.
    std::vector<std::string> read() {
        TranscriptReader reader(files, {"\"usage\"", "\"tokens\""});
        std::vector<std::string> lines;
        position =
            reader.usageLines(path, position, [&](std::string_view line) { lines.emplace_back(line); });
        return lines;
    }

    MemoryFiles files;
    std::optional<TranscriptPosition> position;
};

TEST_F(TranscriptReaderTest, GivesTheLinesThatHoldAMarker) {
    files.put(path, "1 \"usage\" a\nnothing\n\n2 \"tokens\" \"usage\"\nusage\n\"tokens\"\n");
    EXPECT_THAT(read(), ElementsAre("1 \"usage\" a", "2 \"tokens\" \"usage\"", "\"tokens\""));
    EXPECT_EQ(position->offset, files.text(path)->size());
    EXPECT_EQ(position->file, files.stat(path, Links::refuse)->inode);
}

TEST_F(TranscriptReaderTest, GoesOnWhereItStopped) {
    files.put(path, "1 \"usage\"\n");
    EXPECT_THAT(read(), ElementsAre("1 \"usage\""));
    EXPECT_THAT(read(), IsEmpty());
    files.append(path, "no\n2 \"usage\"\n");
    EXPECT_THAT(read(), ElementsAre("2 \"usage\""));
}

TEST_F(TranscriptReaderTest, AnUnfinishedLineWaitsForItsEnd) {
    files.put(path, "1 \"usage\"\n2 \"usa");
    EXPECT_THAT(read(), ElementsAre("1 \"usage\""));
    EXPECT_EQ(position->offset, 10U);
    files.append(path, "ge\" whole");
    EXPECT_THAT(read(), IsEmpty());
    EXPECT_EQ(position->offset, 10U);
    files.append(path, "\n");
    EXPECT_THAT(read(), ElementsAre("2 \"usage\" whole"));
}

TEST_F(TranscriptReaderTest, AFileThatWasCutIsReadFromItsStart) {
    files.put(path, "1 \"usage\"\n2 \"usage\"\n");
    EXPECT_THAT(read(), ElementsAre("1 \"usage\"", "2 \"usage\""));
    files.rewrite(path, "3 \"usage\"\n");
    EXPECT_THAT(read(), ElementsAre("3 \"usage\""));
}

TEST_F(TranscriptReaderTest, AFileThatWasReplacedIsReadFromItsStart) {
    files.put(path, "1 \"usage\"\n");
    EXPECT_THAT(read(), ElementsAre("1 \"usage\""));
    files.put(path, "3 \"usage\"\n4 \"usage\"\n");
    EXPECT_THAT(read(), ElementsAre("3 \"usage\"", "4 \"usage\""));
}

TEST_F(TranscriptReaderTest, APositionOfNoFileHoldsForAny) {
    files.put(path, "1 \"usage\"\n2 \"usage\"\n");
    position = TranscriptPosition{10, std::nullopt};
    EXPECT_THAT(read(), ElementsAre("2 \"usage\""));
    EXPECT_TRUE(position->file.has_value());
}

TEST_F(TranscriptReaderTest, AnEmptyFileAndOneWithoutMarkersAreConsumed) {
    files.put(path, "");
    EXPECT_THAT(read(), IsEmpty());
    EXPECT_EQ(position->offset, 0U);
    files.append(path, "\n\nnothing here\n");
    EXPECT_THAT(read(), IsEmpty());
    EXPECT_EQ(position->offset, 15U);
}

TEST_F(TranscriptReaderTest, WhatCannotBeOpenedHasNoPosition) {
    EXPECT_THAT(read(), IsEmpty());
    EXPECT_FALSE(position.has_value());
    files.put("/t/elsewhere", "1 \"usage\"\n");
    ASSERT_FALSE(files.makeLink("/t/elsewhere", path));
    EXPECT_THAT(read(), IsEmpty());
    EXPECT_FALSE(position.has_value());
    files.put(path, "1 \"usage\"\n");
    files.giveAway(path);
    EXPECT_THAT(read(), IsEmpty());
    files.putSpecial(path);
    EXPECT_THAT(read(), IsEmpty());
    EXPECT_FALSE(position.has_value());
}

TEST_F(TranscriptReaderTest, BadTextIsRepaired) {
    files.put(path, "caf\xE9 \"usage\"\n");
    EXPECT_THAT(read(), ElementsAre("caf\uFFFD \"usage\""));
}

// Lines and markers that lie across every border between two reads of the file.
TEST_F(TranscriptReaderTest, LinesOfAllLengthsComeWhole) {
    std::string text;
    std::vector<std::string> expected;
    for (std::size_t length = 1; text.size() < 5 * megabyte; length = length * 3 / 2 + 1) {
        for (const bool isMarked : {true, false}) {
            const std::string line =
                std::string(length, 'x') + (isMarked ? "\"usage\"" : "usage") + std::string(length / 2, 'y');
            text += line + "\n";
            if (isMarked) {
                expected.push_back(line);
            }
        }
    }
    for (std::size_t shift = 0; shift < 9; ++shift) {
        files.put(path, std::string(256 * 1024 - 4 - shift, '\n') + text);
        position.reset();
        EXPECT_TRUE(read() == expected) << shift;
        EXPECT_EQ(position->offset, files.text(path)->size());
    }
}

TEST_F(TranscriptReaderTest, ALineOfManyMegabytesComesWholeOrNotAtAll) {
    const std::string whole = std::string(9 * megabyte, 'x') + "\"tokens\"" + std::string(megabyte, 'y');
    files.put(path,
              "1 \"usage\"\n" + whole + "\n" + std::string(6 * megabyte, 'z') + "\n2 \"usage\"\n" + whole);
    const std::vector<std::string> lines = read();
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_TRUE(lines[1] == whole);
    EXPECT_EQ(lines[2], "2 \"usage\"");
    EXPECT_EQ(position->offset, 10 + whole.size() + 1 + 6 * megabyte + 1 + 10);
    files.append(path, "\n");
    EXPECT_TRUE(read() == std::vector{whole});
}

TEST_F(TranscriptReaderTest, ALineBeyondAllMeasureIsPassedOver) {
    files.put(path, "\"usage\"" + std::string(TranscriptReader::longestLine, 'x') + "\n2 \"usage\"\n");
    EXPECT_THAT(read(), ElementsAre("2 \"usage\""));
}

TEST_F(TranscriptReaderTest, AReadingThatIsCancelledStops) {
    files.put(path, "1 \"usage\"\n");
    const std::atomic<bool> isCancelled = true;
    TranscriptReader reader(files, {"\"usage\""}, &isCancelled);
    const auto stopped = reader.usageLines(path, std::nullopt, [](std::string_view) { FAIL(); });
    EXPECT_EQ(stopped->offset, 0U);
}

TEST_F(TranscriptReaderTest, ListsWhatWasChangedSince) {
    files.clock = 100;
    files.put("/t/old.jsonl", "");
    files.clock = 200;
    files.put("/t/just.jsonl", "");
    files.clock = 300;
    for (const auto name : {"1.jsonl", "1.json", "1.jsonlx", "p/2.jsonl", "p/s/3.jsonl", "p/s/sub/4.jsonl",
                            "p/s/sub/x/5.jsonl", "p/s/sub/x/y/6.jsonl", ".hidden.jsonl", ".hidden/2.jsonl"}) {
        files.put(std::string("/t/") + name, "");
    }
    files.put("/t/theirs.jsonl", "");
    files.giveAway("/t/theirs.jsonl");
    files.putSpecial("/t/pipe.jsonl");
    ASSERT_FALSE(files.makeLink("/t/1.jsonl", "/t/link.jsonl"));
    ASSERT_FALSE(files.makeLink("/t/p", "/t/linked"));
    ASSERT_FALSE(files.makeDirectory("/t/folder.jsonl", 0700));

    const TranscriptListing listing = TranscriptReader::transcripts(files, "/t", 200);
    std::vector<std::string> found;
    for (const Transcript& transcript : listing.transcripts) {
        found.push_back(transcript.path);
    }
    EXPECT_THAT(found, ElementsAre("/t/1.jsonl", "/t/just.jsonl", "/t/p/2.jsonl", "/t/p/s/3.jsonl",
                                   "/t/p/s/sub/4.jsonl", "/t/p/s/sub/x/5.jsonl"));
    EXPECT_THAT(listing.directories, testing::UnorderedElementsAre("/t", "/t/p", "/t/p/s", "/t/p/s/sub",
                                                                   "/t/p/s/sub/x", "/t/folder.jsonl"));
    EXPECT_THAT(TranscriptReader::transcripts(files, "/t/p/s/sub/x", 200, 4).directories,
                ElementsAre("/t/p/s/sub/x"));
}

TEST_F(TranscriptReaderTest, AFolderThatIsNotThereHoldsNothing) {
    EXPECT_THAT(TranscriptReader::transcripts(files, "/gone", 0).transcripts, IsEmpty());
}

} // namespace
} // namespace veslora
