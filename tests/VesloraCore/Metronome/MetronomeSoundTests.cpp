// SPDX-License-Identifier: MIT
#include "VesloraCore/Metronome/MetronomeSound.h"

#include <gtest/gtest.h>

#include <string>

using namespace veslora;

TEST(MetronomeSound, HasItsNamesInOrder) {
    const std::pair<const char*, const char*> names[] = {{"click", "Click"},
                                                         {"woodblock", "Woodblock"},
                                                         {"hihat", "Hi-hat"},
                                                         {"beep", "Beep"},
                                                         {"silent", "Silent"}};
    ASSERT_EQ(allMetronomeSounds.size(), std::size(names));
    for (std::size_t index = 0; index < std::size(names); ++index) {
        EXPECT_EQ(rawValue(allMetronomeSounds[index]), names[index].first);
        EXPECT_EQ(displayName(allMetronomeSounds[index]), names[index].second);
        EXPECT_EQ(metronomeSoundFrom(names[index].first), allMetronomeSounds[index]);
    }
}

TEST(MetronomeSound, AnythingElseIsTheClick) {
    EXPECT_EQ(metronomeSoundFrom(std::nullopt), MetronomeSound::click);
    for (const std::string& text : {std::string(), std::string("Beep"), std::string("beep "),
                                    std::string("Hi-hat"), std::string("\xff"), std::string("beep\0", 5)}) {
        EXPECT_EQ(metronomeSoundFrom(text), MetronomeSound::click);
    }
}
