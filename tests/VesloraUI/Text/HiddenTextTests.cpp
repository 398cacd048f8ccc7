// SPDX-License-Identifier: MIT
// Requests that were made to look like others: what is not on screen can't be allowed.
#include "tests/VesloraUI/Fixtures/FakeJudge.h"
#include "tests/VesloraUI/Fixtures/Scene.h"

#include <QImage>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veslora {
namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::Not;

constexpr QSize room{472, 86};

class HiddenTextTest : public testing::Test {
  protected:
    void ask(const std::string& text) {
        scene.claude.publish(scene.claude.summaries(),
                             {FakeMonitor::request("r1", scene.platform.time.now(), text)});
        scene.show("Claude/Views/ClaudeRequestAlert.qml",
                   {{"agents", QVariant::fromValue(&scene.agents)},
                    {"judge", QVariant::fromValue(&judge)},
                    {"requestId", "r1"}},
                   room);
        scene.advance(0.7);
    }
    bool canAllow(const std::string& text) {
        ask(text);
        EXPECT_TRUE(scene.isEnabled("Deny"));
        EXPECT_TRUE(scene.isEnabled("Jump"));
        return scene.isEnabled("Allow");
    }
    /// The text of the request as it stands in the alert.
    std::string shown() { return scene.texts().value(2).toStdString(); }
    /// Where the request's text is drawn.
    QImage body() {
        constexpr QRect lines(0, 15, 472, 32);
        return scene.picture().copy(lines);
    }

    FakeJudge judge;
    Scene scene;
};

std::string repeated(const char* piece, int times) {
    return QString(piece).repeated(times).toStdString();
}

int leftEdge(const QImage& picture) {
    for (int x = 0; x < picture.width(); ++x) {
        for (int y = 0; y < picture.height(); ++y) {
            if (qGray(picture.pixel(x, y)) > 60) {
                return x;
            }
        }
    }
    return picture.width();
}

} // namespace

TEST_F(HiddenTextTest, ObjectCharactersThatPullTheTextOutOfSightCantBeAllowed) {
    EXPECT_FALSE(canAllow("ls -la '" + repeated("\uFFFC", 110) + "'; rm -rf ~"));
    EXPECT_THAT(shown(), HasSubstr("⟨U+FFFC⟩"));
}

TEST_F(HiddenTextTest, WideBlanksAndObjectsThatLeaveAHarmlessHalfCantBeAllowed) {
    EXPECT_FALSE(canAllow("ls " + repeated("\u2003", 42) + repeated("\uFFFC", 73) + "; rm -rf ~"));
    EXPECT_THAT(shown(), HasSubstr("⟨U+2003⟩"));
}

TEST_F(HiddenTextTest, PrivateUseIsSpelled) {
    ask("rm a\uE000b\U0010FFFD");
    EXPECT_EQ(shown(), "rm a⟨U+E000⟩b⟨U+10FFFD⟩");
}

TEST_F(HiddenTextTest, UnassignedCodesAndNoncharactersAreSpelled) {
    ask("rm a\u0378b\U000E1000c\uFDD0");
    EXPECT_EQ(shown(), "rm a⟨U+0378⟩b⟨U+E1000⟩c⟨U+FDD0⟩");
}

TEST_F(HiddenTextTest, WhatTheToolkitIsTooOldForIsSpelled) {
    ask("rm \U0001FAE8\U00031350");
    EXPECT_EQ(shown(), "rm ⟨U+1FAE8⟩⟨U+31350⟩");
}

TEST_F(HiddenTextTest, FourHundredJoinersBetweenTwoLettersCantBeAllowed) {
    EXPECT_FALSE(canAllow("rm a" + repeated("\u034F", 400) + "b"));
}

TEST_F(HiddenTextTest, ThreeHundredVariationSelectorsCantBeAllowed) {
    EXPECT_FALSE(canAllow("rm a" + repeated("\uFE0F", 300) + "b"));
    EXPECT_FALSE(canAllow("rm a" + repeated("\U000E0100", 300) + "b"));
}

TEST_F(HiddenTextTest, ThreeThousandMarksOnOneLetterCantBeAllowed) {
    EXPECT_FALSE(canAllow("rm a" + repeated("\u0301", 3000) + "b"));
    EXPECT_FALSE(canAllow("rm a" + repeated("\u0301\u0302\u0303\u0304\u0305", 600) + "b"));
}

TEST_F(HiddenTextTest, EnclosingMarksThatBlotALetterOutAreSpelled) {
    for (const char* mark : {"\u20DD", "\u0489"}) {
        EXPECT_FALSE(canAllow("rm a" + repeated(mark, 30) + "b"));
    }
    ask("rm a\u20DDb\u0489");
    EXPECT_EQ(shown(), "rm a⟨U+20DD⟩b⟨U+0489⟩");
}

TEST_F(HiddenTextTest, FillersThatLeaveTheBoxCantBeAllowed) {
    for (const int count : {60, 128}) {
        EXPECT_FALSE(canAllow(repeated("\u115F", count) + "b"));
    }
}

TEST_F(HiddenTextTest, BlanksThatAreNoOrdinaryOnesAreSpelled) {
    ask("rm\u00A0-rf\u2003~\u3000\u2800");
    EXPECT_EQ(shown(), "rm⟨U+00A0⟩-rf⟨U+2003⟩~⟨U+3000⟩⟨U+2800⟩");
}

TEST_F(HiddenTextTest, SignsThatCameWithTheTextAreSpelled) {
    ask("echo a ⏎ ⇥ ␍ ␣ ⟨U+0041⟩");
    EXPECT_EQ(shown(), "echo a ⟨U+23CE⟩ ⟨U+21E5⟩ ⟨U+240D⟩ ⟨U+2423⟩ ⟨U+27E8⟩U+0041⟨U+27E9⟩");
}

TEST_F(HiddenTextTest, HebrewLettersMoveNothing) {
    const std::string start = ": א ; rm -rf ~ ";
    EXPECT_TRUE(canAllow(start + "# ב ; ls -la"));
    const QImage whole = body();
    EXPECT_LT(leftEdge(whole), 6) << "on the left";
    ask(start + "#");
    const int width = leftEdge(body().mirrored(true, false));
    const QRect same(0, 0, room.width() - width - 3, whole.height());
    EXPECT_GT(same.width(), 60);
    EXPECT_EQ(body().copy(same), whole.copy(same)) << "what comes first is shown first";
}

TEST_F(HiddenTextTest, ArabicLettersMoveNothing) {
    EXPECT_TRUE(canAllow("عقد.pdf ; rm -rf ~"));
    EXPECT_LT(leftEdge(body()), 6);
}

TEST_F(HiddenTextTest, NamesOfSessionsAreSpelledToo) {
    auto session = FakeMonitor::session("s1", ClaudeStatus::Working{1});
    session.name = "a\u202Eb\uFFFC\n";
    scene.claude.publish({session}, {});
    ask("ls");
    EXPECT_THAT(scene.texts(), Contains("a⟨U+202E⟩b⟨U+FFFC⟩ ⏎ "));
}

TEST_F(HiddenTextTest, ItSaysWhyItCantBeAllowed) {
    ask(std::string(130, 'W'));
    EXPECT_FALSE(scene.isEnabled("Allow"));
    EXPECT_THAT(scene.texts(), Contains("Can't be shown in full · use Jump"));
    EXPECT_THAT(shown(), HasSubstr("…")) << "three lines";
    ask(std::string(131, 'i'));
    EXPECT_THAT(scene.texts(), Contains("Too long to show here · use Jump"));
    ask("ls");
    EXPECT_THAT(scene.texts(), Not(Contains(QString("Can't be shown in full · use Jump"))));
}

} // namespace veslora
