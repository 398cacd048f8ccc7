// SPDX-License-Identifier: MIT
// Tests that need an application object make the one that they need, so none is made here.
#include <gtest/gtest.h>

int main(int count, char** arguments) {
    testing::InitGoogleTest(&count, arguments);
    return RUN_ALL_TESTS();
}
