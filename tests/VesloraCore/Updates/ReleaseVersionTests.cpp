// SPDX-License-Identifier: MIT
#include "VesloraCore/Updates/ReleaseVersion.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace veslora {
namespace {

ReleaseVersion version(const std::string& text) {
    const auto parsed = ReleaseVersion::parse(text);
    EXPECT_TRUE(parsed) << text;
    return parsed.value_or(ReleaseVersion());
}

TEST(ReleaseVersionTests, AreInTheOrderOfTheirAge) {
    const std::vector<std::string> byAge{"0",
                                         "0.0.1",
                                         "0.1",
                                         "0.2~alpha",
                                         "0.2~beta",
                                         "0.2~beta.2",
                                         "0.2~beta.10",
                                         "0.2~rc",
                                         "0.2-rc1",
                                         "0.2~rc2",
                                         "0.2~rc10",
                                         "0.2",
                                         "0.2.0.1",
                                         "0.9",
                                         "0.10",
                                         "1.0~a.b",
                                         "1",
                                         "1.1",
                                         "2.0.0",
                                         "10",
                                         "20261123",
                                         "123456789012345678901234567890",
                                         "123456789012345678901234567890.1"};
    for (std::size_t older = 0; older < byAge.size(); ++older) {
        for (std::size_t newer = 0; newer < byAge.size(); ++newer) {
            EXPECT_EQ(version(byAge[older]) <=> version(byAge[newer]), older <=> newer)
                << byAge[older] << ", " << byAge[newer];
        }
    }
}

TEST(ReleaseVersionTests, AreEqualWhereOnlyTheSpellingDiffers) {
    for (const auto& [one, other] :
         std::vector<std::pair<std::string, std::string>>{{"1", "1.0.0"},
                                                          {"0", "0.0"},
                                                          {"01.002", "1.2"},
                                                          {"0.2~rc1", "0.2-rc1"},
                                                          {"0.2~rc1", "0.2.0~rc.01"}}) {
        EXPECT_EQ(version(one), version(other)) << one << ", " << other;
    }
}

TEST(ReleaseVersionTests, NothingElseIsAVersion) {
    for (const std::string text :
         {"",     " ",   "v1",  "1 ",   " 1",    "1.",    ".1",      "1..2",    "1,2",    "-1",
          "~rc1", "1~",  "1-",  "1-2",  "1~1rc", "1~rc.", "1~rc..1", "1~rc_1",  "1~rc-1", "1~rc~1",
          "1+2",  "1:2", "1/2", "../1", "1.a",   "0x10",  "1e5",     "\xd9\xa1"}) {
        EXPECT_FALSE(ReleaseVersion::parse(text)) << text;
    }
    EXPECT_FALSE(ReleaseVersion::parse(std::string("1\0", 2)));
    EXPECT_TRUE(ReleaseVersion::parse(std::string(ReleaseVersion::longest, '1')));
    EXPECT_FALSE(ReleaseVersion::parse(std::string(ReleaseVersion::longest + 1, '1')));
}

TEST(ReleaseVersionTests, KeepsItsSpelling) {
    EXPECT_EQ(version("00.2~rc.1").text(), "00.2~rc.1");
}

} // namespace
} // namespace veslora
