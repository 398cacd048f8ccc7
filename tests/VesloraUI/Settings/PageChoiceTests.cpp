// SPDX-License-Identifier: MIT
#include "VesloraUI/Settings/PageChoice.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace veslora {
namespace {

TEST(PageChoice, StepsAroundBothEnds) {
    PageChoice choice;
    choice.setProperty("count", 3);
    for (const int page : {1, 2, 0, 1}) {
        choice.step(1);
        EXPECT_EQ(choice.current(), page);
    }
    for (const int page : {0, 2}) {
        choice.step(-1);
        EXPECT_EQ(choice.current(), page);
    }
    choice.step(-7);
    EXPECT_EQ(choice.current(), 1);
}

TEST(PageChoice, APageThatThereIsNotIsNotTaken) {
    PageChoice choice;
    QSignalSpy changes(&choice, &PageChoice::currentChanged);
    choice.step(1);
    choice.choose(0);
    choice.setProperty("count", 3);
    choice.choose(3);
    choice.choose(-1);
    EXPECT_EQ(choice.current(), 0);
    EXPECT_EQ(changes.count(), 0);
    choice.choose(2);
    choice.choose(2);
    EXPECT_EQ(changes.count(), 1);
}

} // namespace
} // namespace veslora
