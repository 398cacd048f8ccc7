// SPDX-License-Identifier: MIT
// GNOME's do-not-disturb, in settings of the test's own. The library looks for its settings once for a whole
// process, so that each case is a process.
#include "VesloraLinux/System/GnomeBanners.h"
#include "tests/VesloraLinux/Support/Program.h"
#include "tests/VesloraLinux/Support/TemporaryFolder.h"
#include "tests/VesloraLinux/Support/Waiting.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace veslora {
namespace {

using ::testing::ExitedWithCode;
using testing::waitUntil;

/// What the desktop's own packages describe.
const std::string usual = R"(<schema id="org.gnome.desktop.notifications"
    path="/org/gnome/desktop/notifications/">
    <key name="show-banners" type="b"><default>true</default></key></schema>)";

class GnomeBannersTest : public ::testing::Test {
  protected:
    GnomeBannersTest() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

    /// Makes this process one of a user whose desktop has that description of settings.
    void describe(const std::string& schema) const {
        folder.put("test.gschema.xml", "<schemalist>" + schema + "</schemalist>");
        const std::string place = folder.path();
        EXPECT_EQ(testing::Program({"glib-compile-schemas", "--strict", place}).wait(), 0);
        qputenv("GSETTINGS_SCHEMA_DIR", place.c_str());
        qputenv("XDG_DATA_DIRS", place.c_str());
        qputenv("XDG_DATA_HOME", place.c_str());
        qputenv("XDG_CONFIG_HOME", place.c_str());
        qputenv("GSETTINGS_BACKEND", "keyfile");
        qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:");
    }
    /// As another program of the user's does.
    static void show(bool doesShow) {
        EXPECT_EQ(testing::Program({"gsettings", "set", "org.gnome.desktop.notifications", "show-banners",
                                    doesShow ? "true" : "false"})
                      .wait(),
                  0);
    }
    /// Ends a process with what its expectations came to. What it says on this stream becomes part of the
    /// failure in the first one.
    [[noreturn]] static void end() {
        const auto& result = *::testing::UnitTest::GetInstance()->current_test_info()->result();
        for (int i = 0; i < result.total_part_count(); ++i) {
            const ::testing::TestPartResult& part = result.GetTestPartResult(i);
            std::fprintf(stderr, "line %d: %s\n", part.line_number(), part.message());
        }
        std::_Exit(::testing::Test::HasFailure() ? 1 : 0);
    }

    testing::CoreApplication application;
    testing::TemporaryFolder folder;
    int told = 0;
    GnomeBanners banners{[this] { ++told; }};
};

using GnomeBannersDeathTest = GnomeBannersTest;

TEST_F(GnomeBannersDeathTest, TheyAreReadAndFollowed) {
    const auto run = [this] {
        describe(usual);
        EXPECT_FALSE(banners.areHidden());
        banners.follow();
        EXPECT_FALSE(banners.areHidden());
        EXPECT_EQ(told, 0);
        show(false);
        EXPECT_TRUE(waitUntil([this] { return told > 0; }));
        EXPECT_TRUE(banners.areHidden());
        told = 0;
        show(true);
        EXPECT_TRUE(waitUntil([this] { return told > 0; }));
        EXPECT_FALSE(banners.areHidden());
        end();
    };
    EXPECT_EXIT(run(), ExitedWithCode(0), "");
}

TEST_F(GnomeBannersDeathTest, ThoseThatAreHiddenAlreadyAreToldOfAtOnce) {
    const auto run = [this] {
        describe(usual);
        show(false);
        banners.follow();
        EXPECT_TRUE(banners.areHidden());
        EXPECT_EQ(told, 1);
        end();
    };
    EXPECT_EXIT(run(), ExitedWithCode(0), "");
}

/// Each of them would end the process if the library were asked for the setting without more ado.
TEST_F(GnomeBannersDeathTest, ADesktopWithoutTheSettingNeverHidesThem) {
    for (const char* schema : {"", R"(<schema id="org.example.other" path="/o/"/>)",
                               R"(<schema id="org.gnome.desktop.notifications" path="/o/"/>)",
                               R"(<schema id="org.gnome.desktop.notifications">
             <key name="show-banners" type="b"><default>false</default></key></schema>)",
                               R"(<schema id="org.gnome.desktop.notifications" path="/o/">
             <key name="show-banners" type="s"><default>'false'</default></key></schema>)"}) {
        const auto run = [this, schema] {
            describe(schema);
            banners.follow();
            EXPECT_FALSE(banners.areHidden());
            EXPECT_EQ(told, 0);
            end();
        };
        EXPECT_EXIT(run(), ExitedWithCode(0), "") << schema;
    }
}

TEST_F(GnomeBannersDeathTest, AMachineWithoutAnyDescriptionsNeverHidesThem) {
    const auto run = [this] {
        for (const char* name : {"GSETTINGS_SCHEMA_DIR", "XDG_DATA_DIRS", "XDG_DATA_HOME"}) {
            qputenv(name, folder.path("nowhere").c_str());
        }
        banners.follow();
        EXPECT_FALSE(banners.areHidden());
        end();
    };
    EXPECT_EXIT(run(), ExitedWithCode(0), "");
}

TEST_F(GnomeBannersTest, WithoutTheLibraryTheyAreNeverHidden) {
    GnomeBanners none([this] { ++told; }, "libnothing-of-that-name.so.0");
    none.follow();
    EXPECT_FALSE(none.areHidden());
    // One that has other functions.
    GnomeBanners other([this] { ++told; }, "libm.so.6");
    other.follow();
    EXPECT_FALSE(other.areHidden());
    EXPECT_EQ(told, 0);
}

} // namespace
} // namespace veslora
