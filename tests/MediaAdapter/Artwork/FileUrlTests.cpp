// SPDX-License-Identifier: MIT
#include "MediaAdapter/Artwork/FileUrl.h"

#include <gtest/gtest.h>

namespace veslora {
namespace {

TEST(FileUrlTests, GivesThePathDecoded) {
    EXPECT_EQ(FileUrl::path("file:///tmp/cover.png"), "/tmp/cover.png");
    EXPECT_EQ(FileUrl::path("file://localhost/tmp/cover.png"), "/tmp/cover.png");
    EXPECT_EQ(FileUrl::path("file:/tmp/cover.png"), "/tmp/cover.png");
    EXPECT_EQ(FileUrl::path("file:///tmp/a%20b%c3%A4%25.png"), "/tmp/a b\xc3\xa4%.png");
    EXPECT_EQ(FileUrl::path("file:///tmp/what?#1.png"), "/tmp/what?#1.png");
}

TEST(FileUrlTests, RefusesEverythingElse) {
    for (const char* url : {"", "/tmp/cover.png", "https://example.org/a.png", "file://server/share/a.png",
                            "file://localhosttmp", "file:relative.png", "file:///a%00b", "file:///a%2",
                            "file:///a%zz", "file:///a%-1"}) {
        EXPECT_EQ(FileUrl::path(url), std::nullopt) << url;
    }
}

} // namespace
} // namespace veslora
