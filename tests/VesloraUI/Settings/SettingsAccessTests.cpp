// SPDX-License-Identifier: MIT
// The settings window as a screen reader meets it.
#include "VesloraUI/Store/SettingsKeys.h"
#include "tests/VesloraUI/Settings/SettingsScene.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

namespace veslora {
namespace {

const std::vector<std::string> tabs{"General",   "Island", "Timer",     "Music",
                                    "Metronome", "Agents", "Keep Awake"};

std::vector<std::string> namesOf(const std::vector<QAccessibleInterface*>& parts) {
    std::vector<std::string> names;
    for (const auto* part : parts) {
        names.push_back(part->text(QAccessible::Name).toStdString());
    }
    return names;
}

/// What each page holds below the tabs, in the order in which it is read.
const std::map<std::string, std::vector<std::string>> controlsOf{
    {"General",
     {"Launch at login", "Hide when an app is fullscreen", "Check for updates automatically", "Check Now",
      "Quit Veslora"}},
    {"Island",
     {"Show on", "Lime accent", "Cyan accent", "Amber accent", "White accent", "Open on hover after",
      "Automatic spacing", "Space between widgets", "Live activity priority"}},
    {"Timer", {"Sound when done", "Notify when a timer ends"}},
    {"Music", {"Show other apps", "Music live activity"}},
    {"Metronome", {"Sound", "Volume", "Downbeat accent"}},
    {"Agents",
     {"Install", "Install", "Approval alerts", "Answer approvals from the island", "Sound for approvals",
      "Finished turns", "Working live activity", "Follow Do Not Disturb", "1 Hour", "Until Tomorrow"}},
    {"Keep Awake", {"Keep the display on", "Stay awake while an agent is working", "Show a live activity"}},
};

/// The island that shows the accent is a picture with a name; the digits on it are nobody's time.
bool isOfPreview(const QString& text) {
    return text.size() == 1 && (text[0].isDigit() || text == ":");
}

/// Runs once for each tab.
class SettingsAccessTest : public testing::TestWithParam<std::string> {
  protected:
    const QString tab = QString::fromStdString(GetParam());

    /// Does one control's action here, clicks on the same one there, and sees that both did the same.
    void expectActionDoesWhatAClickDoes(std::size_t place, const QString& action) const {
        SettingsScene acted(tab);
        SettingsScene clicked(tab);
        const QStringList before = clicked.state();
        QAccessibleInterface& control = *clicked.controls().at(place);
        const QString name = control.text(QAccessible::Name);
        const bool isChosen = control.role() == QAccessible::RadioButton && control.state().checked;
        clicked.click(control);
        clicked.advance(0);
        ASSERT_TRUE(SettingsScene::act(*acted.controls().at(place), action))
            << name.toStdString() << " offers no " << action.toStdString();
        acted.advance(0);
        EXPECT_EQ(acted.state(), clicked.state()) << name.toStdString() << ": " << action.toStdString();
        if (name != tab && !isChosen) {
            EXPECT_NE(clicked.state(), before) << name.toStdString() << " does nothing at all";
        }
    }
};

INSTANTIATE_TEST_SUITE_P(Tabs, SettingsAccessTest,
                         testing::Values("General", "Island", "Timer", "Music", "Metronome", "Agents",
                                         "Keep Awake"),
                         [](const auto& tab) {
                             return QString::fromStdString(tab.param).remove(' ').toStdString();
                         });

TEST_P(SettingsAccessTest, EachControlsActionDoesWhatItsClickDoes) {
    auto expected = tabs;
    const auto& onPage = controlsOf.at(GetParam());
    expected.insert(expected.end(), onPage.begin(), onPage.end());
    const SettingsScene scene(tab);
    ASSERT_EQ(namesOf(scene.controls()), expected);
    const auto controls = scene.controls();
    for (std::size_t i = 0; i < expected.size(); ++i) {
        // A slider is moved, not pressed.
        if (controls[i]->role() != QAccessible::Slider) {
            expectActionDoesWhatAClickDoes(i, QAccessibleActionInterface::pressAction());
        }
    }
}

TEST_P(SettingsAccessTest, TogglingASwitchStoresItsSetting) {
    const SettingsScene scene(tab);
    const auto controls = scene.controls();
    for (std::size_t i = 0; i < controls.size(); ++i) {
        if (controls[i]->role() == QAccessible::CheckBox) {
            expectActionDoesWhatAClickDoes(i, QAccessibleActionInterface::toggleAction());
        }
    }
}

TEST_P(SettingsAccessTest, TheTabsStandInAListAndTheOpenOneIsSelected) {
    const SettingsScene scene(tab);
    for (const std::string& name : tabs) {
        const auto* part = scene.part(QString::fromStdString(name));
        ASSERT_TRUE(part) << name;
        EXPECT_EQ(part->role(), QAccessible::PageTab);
        ASSERT_TRUE(part->parent());
        EXPECT_EQ(part->parent()->role(), QAccessible::PageTabList);
        EXPECT_TRUE(part->state().selectable);
        EXPECT_EQ(part->state().selected, name == GetParam()) << name;
    }
}

TEST_P(SettingsAccessTest, EveryTextIsReadOnce) {
    const SettingsScene scene(tab);
    const auto parts = scene.parts();
    // What shows as a value is told by the control that it is the value of.
    for (const QString& text : scene.texts()) {
        if (isOfPreview(text)) {
            continue;
        }
        const auto says = [&](const auto* part, QAccessible::Text kind) { return part->text(kind) == text; };
        // A list's button, or a slider, describes itself by its value, and by its detail after that.
        const auto saysInOne = [&](const auto* part) {
            const QString description = part->text(QAccessible::Description);
            return (part->role() == QAccessible::ComboBox || part->role() == QAccessible::Slider) &&
                   (description.startsWith(text + ". ") || description.endsWith(". " + text));
        };
        const auto times = std::ranges::count_if(parts, [&](const auto* part) {
            return says(part, QAccessible::Name) || says(part, QAccessible::Description) || saysInOne(part);
        });
        const auto shown = scene.texts().count(text);
        // A section's button says which section it belongs to.
        const auto described = std::ranges::count_if(parts, [&](const auto* part) {
            return part->role() == QAccessible::Button && says(part, QAccessible::Description);
        });
        EXPECT_EQ(times - described, shown) << text.toStdString();
    }
}

TEST(SettingsAccess, TitlesNotesAndTheVersionAreText) {
    const SettingsScene general;
    const SettingsScene agents("Agents");
    const SettingsScene keepAwake("Keep Awake");
    const std::pair<const SettingsScene*, const char*> texts[] = {
        {&general, "Version 1.2.3"},
        {&agents, "Claude Code: hooks and status line"},
        {&agents, "Not installed"},
        {&agents, "Without hooks, sessions and their working time still show; approvals don't."},
        {&keepAwake, "Closing the lid still puts your computer to sleep."},
    };
    for (const auto& [scene, name] : texts) {
        const auto* text = scene->part(name);
        ASSERT_TRUE(text) << name;
        EXPECT_EQ(text->role(), QAccessible::StaticText) << name;
    }
}

TEST(SettingsAccess, AFailedInstallIsAlertedOf) {
    SettingsScene scene("Agents");
    scene.claude.failInstalls = true;
    const QString failure = "Couldn't read ~/.claude/settings.json; nothing was changed.";
    EXPECT_FALSE(scene.part(failure));
    scene.press("Install");
    scene.advance(0);
    const auto* alert = scene.part(failure);
    ASSERT_TRUE(alert);
    // Screen readers speak an alert when it comes to show.
    EXPECT_EQ(alert->role(), QAccessible::Notification);
}

TEST(SettingsAccess, APickersListIsWorkedWithoutAPointer) {
    SettingsScene scene("Timer");
    const QString press = QAccessibleActionInterface::pressAction();
    ASSERT_TRUE(SettingsScene::act(*scene.part("Sound when done"), press));
    scene.advance(0);
    auto* choice = scene.part("Hero");
    ASSERT_TRUE(choice) << "the list is open";
    EXPECT_TRUE(scene.part("Glass")->state().selected) << "the one that is stored";
    EXPECT_FALSE(choice->state().selected);
    ASSERT_TRUE(SettingsScene::act(*choice, press));
    scene.advance(0);
    EXPECT_FALSE(scene.part("Hero")) << "the list is closed";
    EXPECT_EQ(scene.settings.stringValue(SettingsKeys::timerSound), "Hero");
    EXPECT_EQ(scene.part("Sound when done")->text(QAccessible::Description), "Hero");
    ASSERT_TRUE(SettingsScene::act(*scene.part("Sound when done"), press));
    scene.advance(0);
    ASSERT_TRUE(SettingsScene::act(*scene.part("Sound when done"), press));
    scene.advance(0);
    EXPECT_FALSE(scene.part("None")) << "a second press closes the list";
}

TEST(SettingsAccess, ASliderIsMovedByActionsAndByKeys) {
    SettingsScene scene("Metronome");
    const auto volume = [&scene] { return scene.settings.doubleValue(SettingsKeys::metronomeVolume); };
    EXPECT_EQ(scene.part("Volume")->role(), QAccessible::Slider);
    EXPECT_EQ(volume(), 0.8);
    ASSERT_TRUE(SettingsScene::act(*scene.part("Volume"), QAccessibleActionInterface::decreaseAction()));
    EXPECT_NEAR(volume(), 0.75, 1e-9);
    ASSERT_TRUE(SettingsScene::act(*scene.part("Volume"), QAccessibleActionInterface::increaseAction()));
    EXPECT_NEAR(volume(), 0.8, 1e-9);
    while (scene.focused() != "Volume") {
        scene.key(Qt::Key_Tab);
    }
    scene.key(Qt::Key_Left);
    EXPECT_NEAR(volume(), 0.75, 1e-9);
    for (int press = 0; press < 30; ++press) {
        scene.key(Qt::Key_Right);
    }
    EXPECT_EQ(volume(), 1);
}

TEST(SettingsAccess, ADisabledButtonDoesNotAct) {
    for (const bool isEnabled : {false, true}) {
        Scene scene;
        scene.show("Settings/SettingsButton.qml", {{"text", "Go"}, {"enabled", isEnabled}});
        const QSignalSpy clicks(&scene.view(), SIGNAL(clicked()));
        auto* const button = QAccessible::queryAccessibleInterface(scene.itemNamed("Go"));
        ASSERT_TRUE(SettingsScene::act(*button, QAccessibleActionInterface::pressAction()));
        EXPECT_EQ(clicks.count(), isEnabled ? 1 : 0);
    }
}

TEST(SettingsAccess, QuittingLeavesTheOrderToTheProgram) {
    SettingsScene scene;
    scene.press("Quit Veslora");
    EXPECT_EQ(scene.quits.count(), 1);
}

} // namespace
} // namespace veslora
