// SPDX-License-Identifier: MIT
// What can be done to a widget without dragging it, and how assistive programs meet that.
#include "VesloraUI/Store/SettingsKeys.h"
#include "VesloraUI/Widgets/ModuleActions.h"
#include "VesloraUI/Widgets/ModuleHandle.h"
#include "tests/VesloraUI/Fixtures/Scene.h"

#include <QAccessible>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <random>

namespace veslora {
namespace {

using ModuleActions::Action;
using testing::ElementsAre;

class ModuleActionsTest : public testing::Test {
  protected:
    void setLayout(const std::string& text) {
        scene.close();
        scene.settings.set(SettingsKeys::widgetLayout, text);
        rack = std::make_unique<RackModel>(scene.settings, scene.platform.taps);
        rack->enterEditing();
    }
    void TearDown() override { scene.close(); }

    [[nodiscard]] QAccessibleInterface* handleOf(WidgetID id) const {
        auto* handle = handleIn(*scene.window().contentItem(), id);
        return handle ? QAccessible::queryAccessibleInterface(handle) : nullptr;
    }
    [[nodiscard]] static ModuleHandle* handleIn(const QQuickItem& parent, WidgetID id) {
        for (auto* item : parent.childItems()) {
            auto* handle = qobject_cast<ModuleHandle*>(item);
            handle = handle && handle->id() == id ? handle : handleIn(*item, id);
            if (handle) {
                return handle;
            }
        }
        return nullptr;
    }
    [[nodiscard]] std::string after(Action action, WidgetID id) const {
        ModuleActions::perform(action, *rack, id);
        return rack->layout().storedValue();
    }
    [[nodiscard]] std::vector<Action> offered(WidgetID id) const {
        std::vector<Action> actions;
        std::ranges::copy_if(ModuleActions::all, std::back_inserter(actions),
                             [&](Action action) { return ModuleActions::isAvailable(action, *rack, id); });
        return actions;
    }

    Scene scene;
    std::unique_ptr<RackModel> rack;
};

TEST_F(ModuleActionsTest, EachDoesWhatItSays) {
    setLayout("timer,claude:2,meters,clock,keepAwake");
    EXPECT_EQ(after(Action::moveRight, WidgetID::timer), "claude:2,timer,meters,clock,keepAwake");
    EXPECT_EQ(after(Action::moveLeft, WidgetID::timer), "timer,claude:2,meters,clock,keepAwake");
    EXPECT_EQ(after(Action::makeSmall, WidgetID::timer), "timer:1,claude:2,meters,clock,keepAwake");
    EXPECT_EQ(after(Action::makeWide, WidgetID::timer), "timer,claude:2,meters,clock,keepAwake");
    EXPECT_EQ(after(Action::remove, WidgetID::meters), "timer,claude:2,clock,keepAwake");
}

TEST_F(ModuleActionsTest, AWidgetGoesToTheNextPageAndTheRackFollowsIt) {
    setLayout("timer,claude:2,meters,clock,keepAwake");
    ASSERT_EQ(rack->pageCount(), 2);
    ModuleActions::perform(Action::toNextPage, *rack, WidgetID::timer);
    EXPECT_EQ(rack->pageOf(WidgetID::timer), 1);
    EXPECT_EQ(rack->page(), 1);
    ModuleActions::perform(Action::toPreviousPage, *rack, WidgetID::timer);
    EXPECT_EQ(rack->pageOf(WidgetID::timer), 0);
    EXPECT_EQ(rack->page(), 0);
}

TEST_F(ModuleActionsTest, OnlyWhatWouldChangeSomethingIsOffered) {
    setLayout("clock");
    EXPECT_THAT(offered(WidgetID::clock), ElementsAre(Action::remove));
    EXPECT_TRUE(offered(WidgetID::timer).empty()) << "it is not in the rack";
    EXPECT_EQ(after(Action::remove, WidgetID::timer), "clock");
    setLayout("clock,timer");
    EXPECT_THAT(offered(WidgetID::clock), ElementsAre(Action::moveRight, Action::remove));
    EXPECT_THAT(offered(WidgetID::timer), ElementsAre(Action::moveLeft, Action::makeSmall, Action::remove));
}

TEST_F(ModuleActionsTest, WhateverIsOfferedChangesTheArrangementAndKeepsIt) {
    std::mt19937 random(7);
    const auto anyOf = [&](const auto& list) { return list[random() % list.size()]; };
    setLayout("timer,music,metronome,claude,claudeUsage,meters,keepAwake,clock");
    int performed = 0;
    for (int round = 0; round < 3000; ++round) {
        if (rack->layout().entries.size() < 3) {
            setLayout("timer:1,music,metronome,claude:1,claudeUsage,meters:2,keepAwake,clock");
        }
        rack->setScreenWidth(anyOf(std::array{500.0, 800.0, 1440.0}));
        const WidgetID id = anyOf(allWidgetIDs);
        const Action action = anyOf(ModuleActions::all);
        const bool isAvailable = ModuleActions::isAvailable(action, *rack, id);
        const std::string before = rack->layout().storedValue();
        EXPECT_EQ(after(action, id) != before, isAvailable)
            << before << ' ' << ModuleActions::name(action).toStdString() << ' ' << rawValue(id);
        EXPECT_EQ(WidgetLayout::fromStoredValue(rack->layout().storedValue()), rack->layout());
        performed += isAvailable;
    }
    EXPECT_GT(performed, 500);
}

TEST_F(ModuleActionsTest, AnAssistiveProgramFindsThemOnTheModule) {
    setLayout("timer,clock");
    scene.showRack(*rack, {700, 112});
    auto* handle = handleOf(WidgetID::timer);
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(handle->text(QAccessible::Name), "Timer");
    EXPECT_EQ(handle->role(), QAccessible::ListItem);
    EXPECT_EQ(handle->text(QAccessible::Description), "Place 1 of 2 on page 1 of 1");
    EXPECT_EQ(handle->actionInterface()->actionNames(), QStringList({"move right", "make small", "remove"}));
    EXPECT_EQ(handle->actionInterface()->localizedActionName("move right"), "move right");
    handle->actionInterface()->doAction("move right");
    EXPECT_EQ(rack->layout().storedValue(), "clock,timer");
    EXPECT_EQ(handle->text(QAccessible::Description), "Place 2 of 2 on page 1 of 1");
    handle->actionInterface()->doAction("fly");
    EXPECT_EQ(rack->layout().storedValue(), "clock,timer");
    const QRect frame = handle->rect();
    EXPECT_EQ(frame.size(), QSize(230, 112));
}

TEST_F(ModuleActionsTest, AModuleThatIsNotEditedOffersNone) {
    setLayout("timer,clock");
    rack->exitEditing();
    scene.showRack(*rack, {700, 112});
    EXPECT_EQ(handleOf(WidgetID::clock), nullptr);
    rack->enterEditing();
    scene.advance(0);
    auto* handle = handleOf(WidgetID::clock);
    ASSERT_NE(handle, nullptr);
    rack->exitEditing();
    EXPECT_TRUE(handle->actionInterface()->actionNames().isEmpty()) << "while it fades";
    handle->actionInterface()->doAction("remove");
    EXPECT_EQ(rack->layout().storedValue(), "timer,clock");
}

} // namespace
} // namespace veslora
