// SPDX-License-Identifier: MIT
#include "VesloraCore/Updates/Appcast.h"

#include <gtest/gtest.h>

namespace veslora {
namespace {

AppcastItem item(const std::string& version, const std::string& architecture = "amd64",
                 std::string_view kind = Appcast::debianPackage) {
    return {
        .version = *ReleaseVersion::parse(version), .kind = std::string(kind), .architecture = architecture};
}

std::string newestOf(const std::vector<AppcastItem>& items) {
    const auto found = Appcast::newest(items, Appcast::debianPackage, "amd64");
    return found ? found->version.text() + " " + found->architecture : "none";
}

TEST(AppcastTests, TheNewestCountsWhereverItStands) {
    EXPECT_EQ(newestOf({item("0.9"), item("0.10"), item("0.10~rc1"), item("0.2")}), "0.10 amd64");
    EXPECT_EQ(newestOf({}), "none");
}

TEST(AppcastTests, OnlyWhatFitsTheMachineCounts) {
    EXPECT_EQ(newestOf({item("0.3", "arm64"), item("0.2"), item("0.4", "amd64", "application/x-rpm")}),
              "0.2 amd64");
    EXPECT_EQ(newestOf({item("0.2"), item("0.3", "all")}), "0.3 all");
    EXPECT_EQ(newestOf({item("0.3", "arm64")}), "none");
}

TEST(AppcastTests, KnowsWhatDebianCallsAProcessor) {
    EXPECT_EQ(Appcast::debianArchitecture("x86_64"), "amd64");
    EXPECT_EQ(Appcast::debianArchitecture("arm64"), "arm64");
    EXPECT_EQ(Appcast::debianArchitecture("arm"), "armhf");
    EXPECT_EQ(Appcast::debianArchitecture("power64"), "");
    EXPECT_EQ(Appcast::debianArchitecture(""), "");
}

TEST(AppcastTests, NamesAPackageAsDebianDoes) {
    EXPECT_EQ(Appcast::fileName(*ReleaseVersion::parse("0.2~rc1"), "amd64"), "veslora_0.2~rc1_amd64.deb");
}

} // namespace
} // namespace veslora
