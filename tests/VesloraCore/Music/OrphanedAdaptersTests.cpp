// SPDX-License-Identifier: MIT
#include "VesloraCore/Music/OrphanedAdapters.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

using namespace veslora;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr const char* adapter = "/opt/my apps/veslora-media-adapter";

std::vector<std::int32_t> orphansIn(const std::string& listing) {
    return orphanedAdapters(listing, adapter);
}

std::string line(const std::string& numbers, const std::string& command = adapter) {
    return numbers + " " + command + "\n";
}

} // namespace

TEST(OrphanedAdapters, AnOrphanIsAChildOfTheFirstProcess) {
    EXPECT_THAT(orphansIn(line("4711 1")), ElementsAre(4711));
    EXPECT_THAT(orphansIn(line("   4711     1", std::string(adapter) + " stream")), ElementsAre(4711));
    EXPECT_THAT(orphansIn(line("4711 501")), IsEmpty());
    EXPECT_THAT(orphansIn(line("4711 11")), IsEmpty());
}

TEST(OrphanedAdapters, OrAChildOfTheUsersServiceManager) {
    const std::string manager = line("900 1", "/usr/lib/systemd/systemd --user");
    EXPECT_THAT(orphansIn(manager + line("4711 900")), ElementsAre(4711));
    EXPECT_THAT(orphansIn(line("4711 900") + manager), ElementsAre(4711)) << "whatever the order";
    EXPECT_THAT(orphansIn(line("900 1", "/usr/bin/notsystemd --user") + line("4711 900")), IsEmpty());
    EXPECT_THAT(orphansIn(line("900 1", "/usr/lib/systemd/systemd --system") + line("4711 900")), IsEmpty());
    EXPECT_THAT(orphansIn(line("900 1", "/opt/veslora/veslora") + line("4711 900")), IsEmpty());
}

TEST(OrphanedAdapters, AnotherProgramIsLeftAlone) {
    for (const char* command :
         {"/opt/other/veslora-media-adapter stream", "/opt/my apps/veslora-media-adapter-2 stream",
          "/usr/bin/vi /opt/my apps/veslora-media-adapter", "veslora-media-adapter stream",
          "/opt/my apps/veslora"}) {
        EXPECT_THAT(orphansIn(line("4711 1", command)), IsEmpty()) << command;
    }
}

TEST(OrphanedAdapters, ALineOfAnotherFormIsSkipped) {
    EXPECT_THAT(orphansIn("  PID  PPID COMMAND\n\n\n" + line("12x 1") + line("x 1") + line("99999999999 1") +
                          line("4711") + "4711 1\n4711 1 \n4711\n" + line("42 1")),
                ElementsAre(42));
    EXPECT_THAT(orphansIn(""), IsEmpty());
}

TEST(OrphanedAdapters, NeverNamesAGroupOfProcesses) {
    EXPECT_THAT(orphansIn(line("0 1") + line("-1 1") + line("-4711 1")), IsEmpty());
}

TEST(OrphanedAdapters, KeepsTheOrderAndNeedsNoLastNewline) {
    EXPECT_THAT(orphansIn(line("9 1") + line("3 1") + "5 1 " + adapter), ElementsAre(9, 3, 5));
}
