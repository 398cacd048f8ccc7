// SPDX-License-Identifier: MIT
#include "VesloraCore/Text/ShellQuote.h"

#include <gtest/gtest.h>

using namespace veslora;

TEST(ShellQuote, PutsATextInSingleQuotes) {
    EXPECT_EQ(shellQuoted("/home/me/a b"), "'/home/me/a b'");
    EXPECT_EQ(shellQuoted("$HOME `x` \"y\" \\"), "'$HOME `x` \"y\" \\'");
    EXPECT_EQ(shellQuoted(""), "''");
}

TEST(ShellQuote, TakesASingleQuoteOutOfTheQuotes) {
    EXPECT_EQ(shellQuoted("it's"), "'it'\\''s'");
    EXPECT_EQ(shellQuoted("''"), "''\\'''\\'''");
}
