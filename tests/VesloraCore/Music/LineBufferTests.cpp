// SPDX-License-Identifier: MIT
#include "VesloraCore/Music/LineBuffer.h"
#include "tests/VesloraCore/TestText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

using namespace veslora;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Lines = std::vector<std::string>;

void add(Lines& lines, const Lines& more) {
    lines.insert(lines.end(), more.begin(), more.end());
}

Lines linesOf(std::string_view bytes, std::size_t limit = LineBuffer::usualLimit) {
    return LineBuffer(limit).append(bytes);
}

} // namespace

TEST(LineBuffer, ALineWaitsForItsEnd) {
    LineBuffer buffer;
    EXPECT_THAT(buffer.append("one\ntwo\nthr"), ElementsAre("one", "two"));
    EXPECT_THAT(buffer.append("e"), IsEmpty());
    EXPECT_THAT(buffer.append(""), IsEmpty());
    EXPECT_THAT(buffer.append("e\n"), ElementsAre("three"));
}

TEST(LineBuffer, AnEmptyLineIsAnEmptyText) {
    EXPECT_THAT(linesOf("\n"), ElementsAre(""));
    EXPECT_THAT(linesOf("\n\na\n"), ElementsAre("", "", "a"));
}

TEST(LineBuffer, ACarriageReturnAndANullByteStay) {
    using namespace std::string_literals;
    EXPECT_THAT(linesOf("one\r\n\0\n"s), ElementsAre("one\r", "\0"s));
}

TEST(LineBuffer, RepairsWhatIsNoUtf8) {
    EXPECT_THAT(linesOf("a\xFF\xFE"
                        "b\n\xC3\n"),
                ElementsAre("a\xEF\xBF\xBD\xEF\xBF\xBD"
                            "b",
                            "\xEF\xBF\xBD"));
}

TEST(LineBuffer, ACharacterMayArriveInPieces) {
    LineBuffer buffer;
    EXPECT_THAT(buffer.append("\xF0\x9F"), IsEmpty());
    EXPECT_THAT(buffer.append("\x98\x80\n"), ElementsAre("😀"));
}

TEST(LineBuffer, ALineBeyondTheLimitIsLeftOutUpToItsEnd) {
    EXPECT_THAT(linesOf("12345\n123456\n1\n", 5), ElementsAre("12345", "1"));
    LineBuffer buffer(5);
    EXPECT_THAT(buffer.append("a\n1234"), ElementsAre("a"));
    EXPECT_THAT(buffer.append("56"), IsEmpty());
    EXPECT_THAT(buffer.append("7"), IsEmpty()) << "the rest of a long line is no line";
    EXPECT_THAT(buffer.append("8\n12345\n"), ElementsAre("12345"));
}

TEST(LineBuffer, TakesALineOfTwoMegabytes) {
    const std::string longest = test::repeated("0123456789abcdef", 1 << 17);
    EXPECT_THAT(linesOf(longest + "\n"), ElementsAre(longest));
    EXPECT_THAT(linesOf(longest + "0\nshort\n"), ElementsAre("short"));
}

TEST(LineBuffer, CutAnywhereTheLinesAreTheSame) {
    std::mt19937 random(13); // NOLINT(cert-msc32-c,cert-msc51-cpp): a test has to be repeatable
    for (int round = 0; round < 300; ++round) {
        std::string bytes;
        for (std::size_t length = random() % 200; length > 0; --length) {
            bytes += "\n\na\r\xC3\xA9\xFF{"[random() % 8];
        }
        const std::size_t limit = random() % 20;
        LineBuffer buffer(limit);
        Lines lines;
        for (std::string_view rest = bytes; !rest.empty();) {
            const std::size_t length = std::min<std::size_t>(random() % 12, rest.size());
            add(lines, buffer.append(rest.substr(0, length)));
            rest.remove_prefix(length);
        }
        ASSERT_EQ(lines, linesOf(bytes, limit)) << round;
    }
}
