// SPDX-License-Identifier: MIT
#include "VesloraCore/Text/UrlText.h"

#include <gtest/gtest.h>

using namespace veslora;

TEST(UrlText, FindsTheHost) {
    EXPECT_EQ(UrlText::host("https://example.com/a?b#c"), "example.com");
    EXPECT_EQ(UrlText::host("https://example.com"), "example.com");
    EXPECT_EQ(UrlText::host("http://me:pw@example.com:8080/"), "example.com");
    EXPECT_EQ(UrlText::host("http://[::1]:80/x"), "::1");
    EXPECT_EQ(UrlText::host("http://bücher.example?q"), "bücher.example");
    EXPECT_EQ(UrlText::host("https://evil@good.example/@other"), "good.example");
}

TEST(UrlText, FindsNoneWhereThereIsNone) {
    for (const char* url :
         {"", "example.com", "mailto:me@example.com", "https://", "https:///path", "file:///tmp", "://a",
          "1http://a", "ht tp://a", "https://a b/", "https://a/ b", "https://a:port/", "http://[::1",
          "http://[::1]x", "https://a\n", "https://<a>"}) {
        EXPECT_EQ(UrlText::host(url), "") << url;
    }
}
