// SPDX-License-Identifier: MIT
// Opening the settings window at a tab by its name, as a command or the first start does.
#include "VesloraUI/Settings/SettingsWindow.h"
#include "tests/VesloraUI/Settings/SettingsParts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace veslora {
namespace {

class SettingsTabTest : public testing::Test {
  protected:
    /// The text of the one tab that is chosen.
    [[nodiscard]] QString chosen() const {
        QStringList texts;
        collect(*window->window()->contentItem(), texts);
        return texts.join('+');
    }

    [[nodiscard]] std::unique_ptr<SettingsWindow> made() {
        return std::make_unique<SettingsWindow>(scene.engine, scene.settings, SettingsParts::models(scene),
                                                SettingsParts::previewSeams(scene), "1.2.3");
    }
    void startAgain() {
        window.reset();
        window = made();
    }

    Scene scene;
    std::unique_ptr<SettingsWindow> window = made();

  private:
    static void collect(const QQuickItem& item, QStringList& texts) {
        if (item.inherits("QQuickTabButton") && item.property("checked").toBool()) {
            texts << item.property("text").toString();
        }
        for (const QQuickItem* child : item.childItems()) {
            collect(*child, texts);
        }
    }
};

TEST_F(SettingsTabTest, WithoutANameItBeginsWithTheFirst) {
    window->open();
    ASSERT_TRUE(window->window());
    EXPECT_EQ(chosen(), "General");
}

TEST_F(SettingsTabTest, OpensEachTabByItsName) {
    for (const auto& [name, title] :
         {std::pair("general", "General"), std::pair("island", "Island"), std::pair("timer", "Timer"),
          std::pair("music", "Music"), std::pair("metronome", "Metronome"), std::pair("agents", "Agents"),
          std::pair("keepAwake", "Keep Awake")}) {
        window->open(name);
        EXPECT_EQ(chosen(), title);
        window->window()->close();
    }
}

TEST_F(SettingsTabTest, OneThatIsOpenAlreadyGoesToTheTabAndStaysThereWithoutAName) {
    window->open("agents");
    window->open();
    EXPECT_EQ(chosen(), "Agents");
    window->open("general");
    EXPECT_EQ(chosen(), "General");
    window->open("agents");
    EXPECT_EQ(chosen(), "Agents");
    window->open("no such tab");
    EXPECT_EQ(chosen(), "Agents");
}

TEST_F(SettingsTabTest, OpenedAgainItIsWhereItWasLeft) {
    window->open("timer");
    const QRect left(40, 30, window->window()->width(), 400);
    window->window()->setGeometry(left);
    window->window()->close();
    window->open();
    EXPECT_EQ(chosen(), "Timer");
    EXPECT_EQ(window->window()->geometry(), left);
    window->window()->close();
    window->open("agents");
    EXPECT_EQ(chosen(), "Agents") << "a tab that is asked for comes before";
}

TEST_F(SettingsTabTest, AfterAStartAgainItIsWhereItWasLeft) {
    window->open("timer");
    const QRect left(40, 30, window->window()->width(), 400);
    window->window()->setGeometry(left);
    window->window()->close();
    startAgain();
    window->open();
    EXPECT_EQ(chosen(), "Timer");
    EXPECT_EQ(window->window()->geometry(), left);
}

TEST_F(SettingsTabTest, AnEndOfTheProgramLeavesItToo) {
    window->open("music");
    startAgain();
    window->open();
    EXPECT_EQ(chosen(), "Music");
}

TEST_F(SettingsTabTest, APlaceThatIsNoneIsNotTaken) {
    window->open();
    const QRect usual = window->window()->geometry();
    const std::string width = std::to_string(usual.width());
    const std::vector<std::string> none{"",
                                        "1,2,3",
                                        "1,2,3,4,5",
                                        "a,b,c,d",
                                        "30,40," + width + ",0",
                                        "30,40," + width + ",-400",
                                        "99999999999,40," + width + ",400",
                                        "2147483647,40," + width + ",2147483647"};
    for (const std::string& text : none) {
        window->window()->close();
        scene.settings.set(SettingsKeys::settingsTab, "no such tab");
        scene.settings.set(SettingsKeys::settingsPlace, text);
        window->open();
        EXPECT_EQ(window->window()->geometry().size(), usual.size()) << text;
        EXPECT_EQ(chosen(), "General") << text;
    }
}

TEST_F(SettingsTabTest, APlaceThatNoScreenHasAnyMoreIsNotTaken) {
    window->open();
    window->window()->setGeometry({90000, 30, window->window()->width(), 400});
    window->window()->close();
    window->open();
    EXPECT_LT(window->window()->x(), 10000);
}

TEST_F(SettingsTabTest, TheWindowHasTheProgramsIcon) {
    window->open();
    const QImage icon = window->window()->icon().pixmap(64, 64).toImage();
    ASSERT_EQ(icon.size(), QSize(64, 64));
    EXPECT_EQ(icon.pixelColor(32, 12), QColor(Qt::black)) << "the island";
    EXPECT_GT(icon.pixelColor(32, 45).lightness(), 60) << "the screen";
    EXPECT_EQ(icon.pixelColor(0, 0).alpha(), 0);
}

TEST_F(SettingsTabTest, ShownItStandsThereToo) {
    window->show("agents");
    ASSERT_TRUE(window->window());
    EXPECT_TRUE(window->window()->isVisible());
    EXPECT_EQ(chosen(), "Agents");
}

} // namespace
} // namespace veslora
