// SPDX-License-Identifier: MIT
#include "VesloraCore/Agents/Hooks/CodexSpoolName.h"

#include <gtest/gtest.h>

using namespace veslora;

using Name = CodexSpoolName;

TEST(CodexSpoolName, ReadsEventsAndRequests) {
    EXPECT_EQ(Name::parse("ev-123-aB3xYz.json"), (Name{Name::Kind::event, 123, "123-aB3xYz"}));
    EXPECT_EQ(Name::parse("perm-123-aB3xYz.json"), (Name{Name::Kind::permission, 123, "123-aB3xYz"}));
    EXPECT_EQ(Name::parse("perm-2147483647-a.json"),
              (Name{Name::Kind::permission, 2147483647, "2147483647-a"}));
}

TEST(CodexSpoolName, AProcessOfZeroIsNotKnown) {
    EXPECT_EQ(Name::parse("perm-0-aB3xYz.json"), (Name{Name::Kind::permission, std::nullopt, "0-aB3xYz"}));
}

TEST(CodexSpoolName, SplitsAtTheFirstDashThatHasSomethingBeforeIt) {
    EXPECT_EQ(Name::parse("ev-12-a-b.json"), (Name{Name::Kind::event, 12, "12-a-b"}));
    EXPECT_EQ(Name::parse("ev-12--.json"), (Name{Name::Kind::event, 12, "12--"}));
    EXPECT_EQ(Name::parse("ev--12-a.json"), (Name{Name::Kind::event, 12, "-12-a"}));
}

TEST(CodexSpoolName, GivesNothingForOtherNames) {
    for (const char* name : {"",
                             ".json",
                             "ev-.json",
                             "ev-abc-aB3xYz.json",
                             "ev-123.json",
                             "ev-123-.json",
                             "ev--123.json",
                             "ev---.json",
                             "tmp.aB3xYz.json",
                             "tmp.aB3xYz",
                             "ev-123-aB3xYz",
                             "EV-123-a.json",
                             "perm123-a.json",
                             "event-1-a.json",
                             "ev-2147483648-a.json",
                             "ev-99999999999999999999-a.json",
                             "ev-+1-a.json",
                             "ev-1 -a.json",
                             "ev-0x1-a.json",
                             "ev-1-a_b.json",
                             "ev-1-a.b.json",
                             "ev-1-../x.json",
                             "ev-1-\xC3\xA9.json",
                             "ev-1-a.JSON"}) {
        EXPECT_FALSE(Name::parse(name)) << name;
    }
    EXPECT_FALSE(Name::parse(std::string_view("ev-1-a\0b.json", 13)));
}
