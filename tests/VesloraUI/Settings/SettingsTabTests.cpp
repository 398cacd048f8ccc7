// SPDX-License-Identifier: MIT
// Opening the settings window at a tab by its name, as a command or the first start does.
#include "VesloraUI/Settings/SettingsWindow.h"
#include "tests/VesloraUI/Fixtures/Scene.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veslora {
namespace {

class SettingsTabTest : public testing::Test {
  protected:
    /// The text of the one tab that is chosen.
    [[nodiscard]] QString chosen() const {
        QStringList texts;
        collect(*window.window()->contentItem(), texts);
        return texts.join('+');
    }

    Scene scene;
    SettingsWindow window{scene.engine, scene.agents, scene.previewer, "1.2.3"};

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
    window.open();
    ASSERT_TRUE(window.window());
    EXPECT_EQ(chosen(), "General");
}

TEST_F(SettingsTabTest, OpensEachTabByItsName) {
    for (const auto& [name, title] :
         {std::pair("general", "General"), std::pair("island", "Island"), std::pair("timer", "Timer"),
          std::pair("music", "Music"), std::pair("metronome", "Metronome"), std::pair("agents", "Agents"),
          std::pair("keepAwake", "Keep Awake")}) {
        window.open(name);
        EXPECT_EQ(chosen(), title);
        window.window()->close();
    }
}

TEST_F(SettingsTabTest, OneThatIsOpenAlreadyGoesToTheTabAndStaysThereWithoutAName) {
    window.open("agents");
    window.open();
    EXPECT_EQ(chosen(), "Agents");
    window.open("general");
    EXPECT_EQ(chosen(), "General");
    window.open("agents");
    EXPECT_EQ(chosen(), "Agents");
    window.open("no such tab");
    EXPECT_EQ(chosen(), "Agents");
}

TEST_F(SettingsTabTest, ShownItStandsThereToo) {
    window.show("agents");
    ASSERT_TRUE(window.window());
    EXPECT_TRUE(window.window()->isVisible());
    EXPECT_EQ(chosen(), "Agents");
}

} // namespace
} // namespace veslora
