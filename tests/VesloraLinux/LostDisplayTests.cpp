// SPDX-License-Identifier: MIT
// The program itself, on a display that is taken from it.
#include "tests/VesloraLinux/Support/Patience.h"
#include "tests/VesloraLinux/Support/PrivateDisplay.h"
#include "tests/VesloraLinux/Support/Program.h"
#include "tests/VesloraLinux/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace veslora {
namespace {

using testing::becomesTrue;
using testing::PrivateDisplay;
using testing::Program;
using testing::TemporaryFolder;

TEST(LostDisplayTests, TheSignsOfLifeGoWithTheServer) {
    const TemporaryFolder home;
    std::filesystem::create_directory(home.path("run"));
    const PrivateDisplay display("800x600");
    // Nothing of the machine's own session reaches the program.
    Program veslora({"env", "-i", "PATH=/usr/bin:/bin", "DISPLAY=" + display.name(), "HOME=" + home.path(),
                     "XDG_RUNTIME_DIR=" + home.path("run"), "XDG_DATA_HOME=" + home.path("data"),
                     "XDG_CONFIG_HOME=" + home.path("configuration"), "QT_QPA_PLATFORM=xcb",
                     "DBUS_SESSION_BUS_ADDRESS=disabled:", "DBUS_SYSTEM_BUS_ADDRESS=disabled:",
                     std::string(VESLORA_BINARIES) + "/veslora"});
    const std::string beat = home.path("run/veslora/heartbeat");
    const std::string link = home.path("data/Veslora/heartbeat");
    const std::string process = home.path("data/Veslora/pid");
    ASSERT_TRUE(becomesTrue([&] {
        return std::filesystem::exists(beat) && std::filesystem::is_symlink(link) &&
               std::filesystem::exists(process);
    }));
    EXPECT_EQ(home.bytesOf("data/Veslora/pid").substr(0, std::to_string(veslora.pid()).size()),
              std::to_string(veslora.pid()));
    display.kill();
    veslora.wait();
    EXPECT_FALSE(std::filesystem::exists(beat));
    EXPECT_FALSE(std::filesystem::is_symlink(link));
    EXPECT_FALSE(std::filesystem::exists(process));
}

} // namespace
} // namespace veslora
