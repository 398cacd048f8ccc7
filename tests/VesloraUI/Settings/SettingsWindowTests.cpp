// SPDX-License-Identifier: MIT
// The settings window, drawn and pressed.
#include "VesloraCore/Agents/Hooks/ClaudeHooksInstaller.h"
#include "VesloraUI/Settings/SettingsWindow.h"
#include "VesloraUI/Store/SettingsKeys.h"
#include "VesloraUI/Style/Views.h"
#include "tests/VesloraUI/Settings/SettingsParts.h"

#include <QScreen>
#include <QSignalSpy>
#include <QTest>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace veslora {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

class SettingsWindowTest : public testing::Test {
  protected:
    void open() {
        auto view = createView(scene.engine, "Settings/SettingsView.qml", parts.properties);
        scene.showWindow(std::unique_ptr<QQuickWindow>(qobject_cast<QQuickWindow*>(view.release())));
    }
    void openAgents() {
        open();
        scene.press("Agents");
    }

    /// Presses each of these switches and sees what it does to its setting, and that to it.
    void expectToggles(const std::vector<std::pair<QString, std::string_view>>& toggles) {
        // Tall enough that the last of them can be pressed without scrolling.
        scene.window().setHeight(900);
        for (const auto& [title, key] : toggles) {
            const bool before = scene.settings.boolValue(key);
            scene.press(title);
            EXPECT_EQ(scene.settings.boolValue(key), !before) << title.toStdString();
            scene.settings.set(key, before);
            const auto* toggle = scene.itemNamed(title);
            ASSERT_TRUE(toggle) << title.toStdString();
            EXPECT_EQ(toggle->property("checked").toBool(), before) << title.toStdString();
        }
    }

    void TearDown() override { scene.close(); }

    Scene scene;
    SettingsParts parts{scene};
};

TEST_F(SettingsWindowTest, BeginsWithTheGeneralTab) {
    open();
    EXPECT_EQ(scene.window().width(), 460);
    EXPECT_THAT(scene.texts(),
                ElementsAre("General", "Island", "Timer", "Music", "Metronome", "Agents", "Keep Awake",
                            "Launch at login", "Start Veslora automatically when you log in.",
                            "Hide when an app is fullscreen",
                            "Keeps the island out of the way of videos, games and presentations. A timer's "
                            "done alert still shows.",
                            "Check for updates automatically",
                            "Veslora checks once a day and asks before installing.", "Version 1.2.3",
                            "Check Now", "Quit Veslora"));
    expectToggles({{"Hide when an app is fullscreen", SettingsKeys::hideInFullscreen}});
}

TEST_F(SettingsWindowTest, TheRowOfTabsHasRoomForSeven) {
    // As wide as the window, and the names that it will have.
    constexpr int width = 460;
    const std::vector<std::pair<QString, QString>> tabs{
        {"General", "gearshape"},
        {"Island", "rectangle.topthird.inset.filled"},
        {"Timer", "timer"},
        {"Music", "music.note"},
        {"Metronome", "metronome"},
        {"Agents", "sparkle"},
        {"Keep Awake", "cup.and.saucer"},
    };
    QVariantList pages;
    for (const auto& [title, symbol] : tabs) {
        pages << QVariantMap{{"title", title}, {"symbol", symbol}};
    }
    scene.show("Settings/SettingsTabs.qml", {{"pages", pages}}, {width, 66});
    EXPECT_LE(scene.view().property("implicitWidth").toDouble(), width - 2 * 8);
    double end = 0;
    for (int i = 0; i < pages.size(); ++i) {
        const QString title = tabs[static_cast<std::size_t>(i)].first;
        const auto* tab = scene.itemNamed(title);
        ASSERT_TRUE(tab) << title.toStdString();
        EXPECT_GE(tab->mapToScene({}).x(), end) << title.toStdString();
        end = tab->mapToScene({tab->width(), 0}).x();
        const auto* content = tab->property("contentItem").value<QQuickItem*>();
        const auto* name = content->childItems().at(1);
        EXPECT_EQ(name->property("text"), title);
        EXPECT_LE(name->implicitWidth() + 16, tab->width()) << title.toStdString();
        scene.press(title);
        EXPECT_EQ(scene.view().property("current").toInt(), i);
        EXPECT_TRUE(tab->property("checked").toBool()) << title.toStdString();
    }
}

TEST_F(SettingsWindowTest, NoPageScrollsWhereTheScreenHasTheRoom) {
    open();
    const double most = scene.window().screen()->availableSize().height() - 60;
    constexpr double wanted = 890;
    EXPECT_EQ(scene.window().height(), std::min(wanted, most));
    scene.window().setHeight(static_cast<int>(wanted));
    for (const char* tab : {"General", "Island", "Timer", "Music", "Metronome", "Agents", "Keep Awake"}) {
        scene.press(tab);
        scene.advance(0);
        const auto children = scene.window().contentItem()->childItems().at(0)->childItems();
        const auto page = std::ranges::find_if(
            children, [](const QQuickItem* item) { return item->inherits("QQuickFlickable"); });
        ASSERT_NE(page, children.end());
        EXPECT_LE((*page)->property("contentHeight").toDouble(), (*page)->height()) << tab;
    }
}

TEST_F(SettingsWindowTest, InstallsUpdatesAndRemovesTheHooks) {
    openAgents();
    EXPECT_THAT(scene.texts(), Contains("Not installed"));
    scene.press("Install");
    EXPECT_TRUE(scene.claude.hooksInstalled());
    EXPECT_THAT(scene.texts(), Contains("Installed"));
    scene.claude.setHooks(false, true);
    EXPECT_THAT(scene.texts(), Contains("Needs update"));
    scene.press("Update");
    EXPECT_TRUE(scene.claude.hooksInstalled());
    scene.press("Remove");
    EXPECT_FALSE(scene.claude.hooksInstalled());
    EXPECT_THAT(scene.texts(), Contains("Not installed"));
}

TEST_F(SettingsWindowTest, SaysWhenNothingWasChanged) {
    openAgents();
    const QString failure = "Couldn't read ~/.claude/settings.json; nothing was changed.";
    EXPECT_THAT(scene.texts(), Not(Contains(failure)));
    scene.claude.failInstalls = true;
    scene.press("Install");
    EXPECT_THAT(scene.texts(), Contains(failure));
    scene.claude.failInstalls = false;
    scene.press("Install");
    EXPECT_THAT(scene.texts(), Not(Contains(failure)));
}

TEST_F(SettingsWindowTest, AFullDiskIsNotAFileThatCouldNotBeRead) {
    openAgents();
    const std::pair<FileError, QString> cases[] = {
        {{make_error_code(std::errc::no_space_on_device), FileError::Action::writing, "/home/me/s.json"},
         "Couldn't write /home/me/s.json: the disk is full. Nothing was changed."},
        {{make_error_code(std::errc::permission_denied), FileError::Action::reading, "/home/me/s.json"},
         "Couldn't read /home/me/s.json: it belongs to somebody else or may not be changed. "
         "Nothing was changed."},
        {{FileRefusal::changed, FileError::Action::writing, "/home/me/s.json"},
         "Couldn't write /home/me/s.json: another program has just changed it. Nothing was changed."},
        {{FileRefusal::hasSecondName, FileError::Action::writing, "/home/me/s.json"},
         "Couldn't write /home/me/s.json: it has a second name (a hard link) that would keep the old text. "
         "Nothing was changed."},
        {{FileRefusal::losesAttributes, FileError::Action::writing, "/home/me/s.json"},
         "Couldn't write /home/me/s.json: its access list or attributes couldn't be kept. "
         "Nothing was changed."},
        {{make_error_code(std::errc::not_a_directory), FileError::Action::writing, "/home/me/Veslora"},
         "Couldn't write /home/me/Veslora: it is a link or no folder. Nothing was changed."},
        {{make_error_code(std::errc::io_error), FileError::Action::writing, "/home/me/s.json"},
         "Couldn't write /home/me/s.json: Input/output error. Nothing was changed."},
    };
    for (const auto& [error, text] : cases) {
        scene.claude.fileError = error;
        scene.press("Install");
        EXPECT_THAT(scene.texts(), Contains(text));
    }
    scene.claude.fileError.reset();
    scene.press("Install");
    EXPECT_THAT(scene.texts(), Not(Contains(testing::Property(&QString::toStdString,
                                                              testing::HasSubstr("Nothing was changed")))));
}

TEST_F(SettingsWindowTest, CodexHasASectionOfItsOwn) {
    // Claude Code's button then says something else, so that “Install” is Codex's.
    scene.claude.setHooks(true, false);
    openAgents();
    const QStringList texts = scene.texts();
    EXPECT_THAT(texts, Contains("Codex: hooks"));
    EXPECT_THAT(
        texts, Contains("Adds eight hooks to ~/.codex/hooks.json (backed up first) so Veslora sees Codex CLI "
                        "sessions and can answer their approvals. Remove takes out only Veslora's. Usage "
                        "needs no install."));
    EXPECT_THAT(texts,
                Contains("Then run /hooks in Codex once and trust them: Codex runs new hooks only after "
                         "you've reviewed them."));
    EXPECT_LT(texts.indexOf("Claude Code: hooks and status line"), texts.indexOf("Codex: hooks"));
    EXPECT_THAT(texts, Contains("Not installed"));
    scene.press("Install");
    EXPECT_TRUE(scene.codex.hooksInstalled());
    EXPECT_THAT(scene.texts(), Not(Contains("Not installed")));
    scene.codex.setHooks(false, true);
    EXPECT_THAT(scene.texts(), Contains("Needs update"));
    scene.press("Update");
    EXPECT_TRUE(scene.codex.hooksInstalled());
    EXPECT_TRUE(scene.claude.hooksInstalled()) << "the other agent's stay";
    scene.claude.setHooks(false, false);
    scene.press("Remove");
    EXPECT_FALSE(scene.codex.hooksInstalled());
}

TEST_F(SettingsWindowTest, SaysWhenNothingOfCodexWasChanged) {
    scene.claude.setHooks(true, false);
    openAgents();
    const QString failure =
        "Couldn't read ~/.codex/hooks.json (it must be a JSON object); nothing was changed.";
    scene.codex.failInstalls = true;
    scene.press("Install");
    EXPECT_THAT(scene.texts(), Contains(failure));
    scene.codex.failInstalls = false;
    scene.press("Install");
    EXPECT_THAT(scene.texts(), Not(Contains(failure)));
}

TEST_F(SettingsWindowTest, EveryToggleIsBoundToItsSetting) {
    openAgents();
    expectToggles({
        {"Approval alerts", SettingsKeys::claudeApprovalAlerts},
        {"Answer approvals from the island", SettingsKeys::claudeAnswerFromIsland},
        {"Sound for approvals", SettingsKeys::claudeApprovalSound},
        {"Finished turns", SettingsKeys::claudeFinishedActivity},
        {"Working live activity", SettingsKeys::claudeWorkingActivity},
        {"Follow Do Not Disturb", SettingsKeys::followDoNotDisturb},
    });
}

TEST_F(SettingsWindowTest, KeepAwakeHasATabOfItsOwn) {
    open();
    scene.press("Keep Awake");
    EXPECT_THAT(
        scene.texts(),
        ElementsAre("General", "Island", "Timer", "Music", "Metronome", "Agents", "Keep Awake",
                    "Keep the display on",
                    "During a Keep Awake session the screen doesn't dim or sleep either.",
                    "Stay awake while an agent is working",
                    "While a Claude Code or Codex session is working, your computer doesn't sleep. The "
                    "screen can still dim.",
                    "Show a live activity", "The time left beside the notch during a session.",
                    "Closing the lid still puts your computer to sleep."));
    expectToggles({
        {"Keep the display on", SettingsKeys::keepAwakeDisplay},
        {"Stay awake while an agent is working", SettingsKeys::keepAwakeWhileClaude},
        {"Show a live activity", SettingsKeys::keepAwakeLiveActivity},
    });
}

TEST_F(SettingsWindowTest, TheTimerHasATabOfItsOwn) {
    open();
    scene.press("Timer");
    EXPECT_THAT(scene.texts(),
                ElementsAre("General", "Island", "Timer", "Music", "Metronome", "Agents", "Keep Awake",
                            "Sound when done", "Glass", "Notify when a timer ends",
                            "Also posts a desktop notification, so you see it even when you're not looking "
                            "at the notch."));
    scene.press("Notify when a timer ends");
    EXPECT_FALSE(scene.settings.boolValue(SettingsKeys::timerNotifications));
}

TEST_F(SettingsWindowTest, TheMusicHasATabOfItsOwn) {
    open();
    scene.press("Music");
    EXPECT_THAT(scene.texts(),
                ElementsAre("General", "Island", "Timer", "Music", "Metronome", "Agents", "Keep Awake",
                            "Show other apps",
                            "When Spotify isn't playing, show browsers and other players. Spotify always "
                            "comes first.",
                            "Music live activity", "Cover and level bars beside the notch while music plays.",
                            "Control Spotify", "Open Spotify to check."));
    expectToggles({
        {"Show other apps", SettingsKeys::musicShowOtherApps},
        {"Music live activity", SettingsKeys::musicLiveActivity},
    });
}

TEST_F(SettingsWindowTest, WhetherSpotifyCanBeControlledIsFollowed) {
    open();
    scene.platform.automation.change(AutomationStatus::allowed);
    EXPECT_THAT(scene.platform.automation.asked, IsEmpty()) << "only where it shows";
    scene.press("Music");
    EXPECT_THAT(scene.texts(), Contains("Allowed. The music keys control Spotify."));
    EXPECT_THAT(scene.platform.automation.asked, ElementsAre("com.spotify.client"));
    scene.platform.automation.change(AutomationStatus::appNotRunning);
    scene.advance(0);
    EXPECT_THAT(scene.texts(), Contains("Open Spotify to check."));
}

TEST_F(SettingsWindowTest, WhichActivityComesFirstIsPicked) {
    open();
    scene.press("Island");
    EXPECT_THAT(scene.texts(),
                Contains("Which one shows beside the notch when music plays during a timer. A finished timer "
                         "always shows."));
    EXPECT_THAT(scene.texts(), Contains("Music").Times(2));
    scene.press("Live activity priority");
    scene.advance(0);
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Return}) {
        QTest::keyClick(&scene.window(), key);
        scene.advance(0);
    }
    EXPECT_EQ(scene.settings.stringValue(SettingsKeys::liveActivityPriority), "timer");
    EXPECT_THAT(scene.texts(), Contains("Timer").Times(2));
    scene.settings.set(SettingsKeys::liveActivityPriority, "nonsense");
    scene.advance(0);
    EXPECT_THAT(scene.texts(), Contains("Timer").Times(1)) << "nothing of it is chosen";
}

TEST_F(SettingsWindowTest, TheMetronomeHasATabOfItsOwn) {
    open();
    scene.press("Metronome");
    EXPECT_THAT(scene.texts(), ElementsAre("General", "Island", "Timer", "Music", "Metronome", "Agents",
                                           "Keep Awake", "Sound", "Click", "Volume", "Downbeat accent",
                                           "The first beat of each bar plays higher."));
    expectToggles({{"Downbeat accent", SettingsKeys::metronomeAccent}});
}

TEST_F(SettingsWindowTest, ASoundOfTheMetronomeIsSampledBesideTheOneThatRuns) {
    scene.metronome.start();
    const auto before = scene.platform.beats.hits.size();
    open();
    scene.press("Metronome");
    for (const auto& [name, sampled] :
         {std::pair("Woodblock", 1), std::pair("Beep", 2), std::pair("Silent", 2)}) {
        scene.press("Sound");
        scene.advance(0);
        scene.press(name);
        scene.advance(2);
        EXPECT_EQ(scene.platform.beatsOfSamples.starts, sampled) << name;
    }
    EXPECT_EQ(scene.settings.stringValue(SettingsKeys::metronomeSound), "silent");
    EXPECT_FALSE(scene.platform.beatsOfSamples.isStarted());
    EXPECT_TRUE(scene.metronome.isRunning());
    EXPECT_GT(scene.platform.beats.hits.size(), before) << "it went on";
}

TEST_F(SettingsWindowTest, ASoundThatIsPickedIsHeardOnce) {
    open();
    scene.press("Timer");
    for (const char* name : {"Ping", "Hero", "Submarine", "Glass"}) {
        scene.press("Sound when done");
        scene.advance(0);
        ASSERT_TRUE(scene.shows("None")) << "the list is open";
        scene.press(name);
        scene.advance(0);
        EXPECT_FALSE(scene.shows("None"));
        EXPECT_EQ(scene.settings.stringValue(SettingsKeys::timerSound), name);
        EXPECT_THAT(scene.texts(), Contains(name));
    }
    EXPECT_THAT(scene.platform.sound.played, ElementsAre("Ping", "Hero", "Submarine", "Glass"));
}

TEST_F(SettingsWindowTest, NoneAndTheSoundThatIsPickedAlreadyPlayNothing) {
    open();
    scene.press("Timer");
    for (const char* name : {"Glass", "None", "None"}) {
        scene.press("Sound when done");
        scene.advance(0);
        scene.press(name);
        scene.advance(0);
        EXPECT_EQ(scene.settings.stringValue(SettingsKeys::timerSound), name);
    }
    EXPECT_THAT(scene.platform.sound.played, testing::IsEmpty());
}

TEST_F(SettingsWindowTest, TheSoundThatShowsIsTheOneThatIsStored) {
    open();
    scene.press("Timer");
    scene.settings.set(SettingsKeys::timerSound, "Hero");
    EXPECT_THAT(scene.texts(), Contains("Hero"));
    scene.settings.set(SettingsKeys::timerSound, "Thunder");
    EXPECT_THAT(scene.texts(), Not(Contains("Hero")));
    EXPECT_THAT(scene.platform.sound.played, testing::IsEmpty());
}

TEST_F(SettingsWindowTest, OpensOnceAndLetsEverythingGoWhenClosed) {
    SettingsWindow settings(scene.engine, scene.settings, SettingsParts::models(scene),
                            SettingsParts::previewSeams(scene), "1.2.3");
    settings.open();
    auto* first = settings.window();
    ASSERT_TRUE(first);
    settings.open();
    EXPECT_EQ(settings.window(), first);
    const QSignalSpy closed(&settings, &SettingsWindow::closed);
    first->close();
    EXPECT_EQ(settings.window(), nullptr);
    EXPECT_EQ(closed.count(), 0) << "it is still there, out of sight";
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(closed.count(), 1);
    settings.open();
    EXPECT_TRUE(settings.window());
}

} // namespace
} // namespace veslora
