// SPDX-License-Identifier: MIT
#include "VesloraCore/Agents/TmuxText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace veslora;

TEST(TmuxText, FindsThePaneOfAPlace) {
    EXPECT_EQ(TmuxText::paneOf("main:@0.%0"), "%0");
    EXPECT_EQ(TmuxText::paneOf("%17"), "%17");
    EXPECT_EQ(TmuxText::paneOf("a.%1:@2.%345"), "%345");
    EXPECT_EQ(TmuxText::paneOf("-t; kill-server:@0.%0"), "%0") << "a hostile name is left behind";
}

TEST(TmuxText, NothingButANumberIsAPane) {
    for (const char* place :
         {"", "%", "main", "main:@0", "main:@0.%", "main:@0.%x", "main:@0.%1;kill-server", "main:@0.%-1",
          "main:@0.% 1", "main:@0%1", "main:@0.%1 ", "main:@0.%12345678901", "%1.%\n"}) {
        EXPECT_FALSE(TmuxText::paneOf(place)) << place;
    }
}

TEST(TmuxText, FindsTheSocket) {
    EXPECT_EQ(TmuxText::socketOf("/tmp/tmux-1000/default,2757,0"), "/tmp/tmux-1000/default");
    EXPECT_EQ(TmuxText::socketOf("/tmp/a,b,c,1,2"), "/tmp/a,b,c");
}

TEST(TmuxText, NoOtherTextHoldsASocket) {
    for (const char* text :
         {"", "/tmp/s", "/tmp/s,1", "/tmp/s,1,x", "/tmp/s,,1", "/tmp/s,1,", "s,1,2", ",1,2", "-L,1,2"}) {
        EXPECT_FALSE(TmuxText::socketOf(text)) << text;
    }
}

TEST(TmuxText, PicksTheClientThatShowsThePaneAndWasUsedLast) {
    const char* const listing = "100 11 %0\n300 12 %1\n200 13 %0\n200 14 %0\n";
    EXPECT_EQ(TmuxText::clientShowing("%0", listing), 13);
    EXPECT_EQ(TmuxText::clientShowing("%1", listing), 12);
    EXPECT_EQ(TmuxText::clientShowing("%2", listing), std::nullopt);
    EXPECT_EQ(TmuxText::clientShowing("%0", "1 5 %0"), 5) << "a last line without its end";
}

TEST(TmuxText, ListsEveryClientThatShowsThePane) {
    const char* const listing = "100 11 %0\n300 12 %1\n200 13 %0\nodd\n1 14 %00\n";
    EXPECT_THAT(TmuxText::clientsShowing("%0", listing), testing::ElementsAre(11, 13));
    EXPECT_THAT(TmuxText::clientsShowing("%2", listing), testing::IsEmpty());
    EXPECT_THAT(TmuxText::clientsShowing("%0", ""), testing::IsEmpty());
}

TEST(TmuxText, PassesOverLinesThatItCannotRead) {
    EXPECT_EQ(TmuxText::clientShowing("%0", ""), std::nullopt);
    EXPECT_EQ(
        TmuxText::clientShowing("%0", "\n\n x y %0\n1 0 %0\n1 -4 %0\n1 99999999999 %0\n1 5 %0 more\n1 5\n"),
        std::nullopt);
    EXPECT_EQ(TmuxText::clientShowing("%0", "no server running\n99999999999999999999 4 %0\n7 6 %0\n"), 6);
}
