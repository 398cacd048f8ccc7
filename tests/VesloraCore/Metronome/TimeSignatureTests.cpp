// SPDX-License-Identifier: MIT
#include "VesloraCore/Metronome/TimeSignature.h"

#include <gtest/gtest.h>

using namespace veslora;

TEST(TimeSignature, KnowsItsSixSignaturesInOrder) {
    const char* texts[] = {"2/4", "3/4", "4/4", "5/4", "6/8", "7/8"};
    ASSERT_EQ(TimeSignature::all.size(), std::size(texts));
    for (std::size_t index = 0; index < std::size(texts); ++index) {
        EXPECT_EQ(TimeSignature::all[index].display(), texts[index]);
        EXPECT_EQ(TimeSignature::all[index].storedValue(), texts[index]);
        EXPECT_EQ(TimeSignature::fromStoredValue(texts[index]), TimeSignature::all[index]);
    }
}

TEST(TimeSignature, AnythingElseReadsAsFourFour) {
    EXPECT_EQ(TimeSignature::fromStoredValue(std::nullopt), TimeSignature::common);
    for (const char* text : {"9/8", "", "3/4 ", "3", "03/4"}) {
        EXPECT_EQ(TimeSignature::fromStoredValue(text), (TimeSignature{4, 4})) << text;
    }
}

TEST(TimeSignature, NextGoesRound) {
    EXPECT_EQ((TimeSignature{2, 4}).next(), (TimeSignature{3, 4}));
    EXPECT_EQ((TimeSignature{7, 8}).next(), (TimeSignature{2, 4}));
    EXPECT_EQ((TimeSignature{9, 8}).next(), (TimeSignature{3, 4})) << "An unknown one counts as the first.";
}
