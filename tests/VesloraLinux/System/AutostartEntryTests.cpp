// SPDX-License-Identifier: MIT
#include "VesloraLinux/System/AutostartEntry.h"

#include <gtest/gtest.h>

namespace veslora {
namespace {

const std::string plain = AutostartEntry::make("/usr/bin/veslora");

TEST(AutostartEntryTests, AnEntryStartsTheProgram) {
    EXPECT_EQ(plain, "[Desktop Entry]\nExec=/usr/bin/veslora\nTryExec=/usr/bin/veslora\nType=Application\n"
                     "Name=Veslora\nIcon=org.veslora.Veslora\nTerminal=false\n");
    EXPECT_TRUE(AutostartEntry::isOn(plain, {}));
    EXPECT_EQ(AutostartEntry::programOf(plain), "/usr/bin/veslora");
}

TEST(AutostartEntryTests, AnyPathIsReadAsItWasWritten) {
    for (const std::string path : {"/home/a b/veslora", "/opt/100%/veslora", "/o\"p`t$x/veslora",
                                   "/o\\p/veslora", "/opt/veslora;x", "/opt/Вес/veslora"}) {
        EXPECT_EQ(AutostartEntry::programOf(AutostartEntry::make(path)), path);
    }
    EXPECT_NE(AutostartEntry::make("/o$p").find("Exec=\"/o\\\\$p\"\n"), std::string::npos);
}

TEST(AutostartEntryTests, EveryDesktopsWayToSwitchItOffCounts) {
    for (const std::string line :
         {"Hidden=true", "Hidden = true", "X-GNOME-Autostart-enabled=false", "X-MATE-Autostart-enabled=false",
          "OnlyShowIn=KDE;XFCE;", "NotShowIn=GNOME;", "NotShowIn=KDE; GNOME"}) {
        EXPECT_FALSE(AutostartEntry::isOn(plain + line + "\n", {"GNOME"})) << line;
        EXPECT_TRUE(AutostartEntry::isOn(AutostartEntry::turnedOn(plain + line + "\n", "/x"), {"GNOME"}))
            << line;
    }
    for (const std::string line :
         {"Hidden=false", "# Hidden=true", "X-GNOME-Autostart-enabled=true", "OnlyShowIn=KDE;GNOME;",
          "NotShowIn=KDE;", "Comment=Hidden=true", "[Desktop Action a]\nHidden=true"}) {
        EXPECT_TRUE(AutostartEntry::isOn(plain + line + "\n", {"GNOME"})) << line;
    }
}

TEST(AutostartEntryTests, WhatIsNoEntryStartsNothing) {
    for (const std::string text :
         {"", "\n\n", "[Desktop Entry", "Exec=/x", "[Other]\nType=Application\nExec=/x",
          "[Desktop Entry]\nExec=/x", "[Desktop Entry]\nType=Link\nExec=/x",
          "[Desktop Entry]\nType=Application\nExec=", "[Desktop Entry]\nType=Application\nExec=\"",
          "\xff\xfe=\n="}) {
        EXPECT_FALSE(AutostartEntry::isOn(text, {})) << text;
        EXPECT_TRUE(AutostartEntry::isOn(AutostartEntry::turnedOn(text, "/x"), {})) << text;
        EXPECT_FALSE(AutostartEntry::isOn(AutostartEntry::turnedOff(text), {})) << text;
    }
    EXPECT_FALSE(AutostartEntry::isOn(plain.substr(0, 20) + std::string(1, '\0'), {}));
}

TEST(AutostartEntryTests, WhatElseStandsInItStays) {
    const std::string users = "# mine\n[Desktop Entry]\nType=Application\nName=Island\nName[de]=Insel\n"
                              "Exec=/old/veslora --x\nX-GNOME-Autostart-Delay=5\n\n[Other]\nExec=/y\n";
    const std::string on = AutostartEntry::turnedOn(AutostartEntry::turnedOff(users), "/usr/bin/veslora");
    EXPECT_TRUE(AutostartEntry::isOn(on, {}));
    EXPECT_EQ(AutostartEntry::programOf(on), "/usr/bin/veslora");
    for (const char* kept : {"# mine\n", "Name=Island\n", "Name[de]=Insel\n", "X-GNOME-Autostart-Delay=5\n",
                             "[Other]\nExec=/y\n"}) {
        EXPECT_NE(on.find(kept), std::string::npos) << kept;
    }
    EXPECT_EQ(AutostartEntry::programOf(AutostartEntry::turnedOff(users)), "/old/veslora");
}

} // namespace
} // namespace veslora
