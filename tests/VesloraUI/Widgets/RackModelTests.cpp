// SPDX-License-Identifier: MIT
#include "VesloraUI/Store/Defaults.h"
#include "VesloraUI/Store/SettingsKeys.h"
#include "VesloraUI/Widgets/RackModel.h"
#include "tests/support/FakeDirectoryWatcher.h"
#include "tests/support/MemoryFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <set>

using namespace veslora;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class CountingHaptics final : public HapticPerforming {
  public:
    std::vector<HapticPattern> performed;
    void perform(HapticPattern pattern) override { performed.push_back(pattern); }
};

class RackModelTest : public testing::Test {
  protected:
    MemoryFiles files;
    FakeDirectoryWatcher watcher;
    Defaults settings{files, watcher, "/config"};
    CountingHaptics haptics;
    std::unique_ptr<RackModel> rack;
    std::vector<double> widths;
    std::vector<bool> editing;

    void SetUp() override { SettingsKeys::registerDefaults(settings); }

    /// Makes the rack of that stored layout, listening to its callbacks.
    RackModel& make(const char* layout) {
        settings.set(SettingsKeys::widgetLayout, layout);
        rack = std::make_unique<RackModel>(settings, haptics);
        rack->onIslandWidthChange = [this](double width) { widths.push_back(width); };
        rack->onEditingChange = [this](bool isEditing) { editing.push_back(isEditing); };
        return *rack;
    }
    void setSpacing(double spacing) {
        settings.set(SettingsKeys::widgetSpacing, spacing);
        settings.set(SettingsKeys::widgetSpacingAutomatic, false);
    }
    [[nodiscard]] std::string stored() const { return *settings.stringValue(SettingsKeys::widgetLayout); }
    [[nodiscard]] std::string preview() const { return rack->previewLayout().storedValue(); }
};

constexpr const char* defaultLayout = "timer,music,metronome:2,claude:2,claudeUsage,meters,keepAwake";

} // namespace

TEST_F(RackModelTest, BeginsWithTheStoredLayoutOnItsFirstPage) {
    RackModel& model = make("music,claude:2");
    EXPECT_EQ(model.layout(), WidgetLayout::fromStoredValue("music,claude:2"));
    EXPECT_EQ(model.page(), 0);
    EXPECT_EQ(model.pageCount(), 1);
    EXPECT_FALSE(model.isEditing());
    EXPECT_FALSE(model.isShowingLibrary());
    EXPECT_THAT(widths, IsEmpty());
}

TEST_F(RackModelTest, FreshStoreGivesTheDefaultLayout) {
    const RackModel model(settings, haptics);
    EXPECT_EQ(model.layout(), WidgetLayout::defaultLayout());
    EXPECT_EQ(model.pageCount(), 2);
}

TEST_F(RackModelTest, IslandHugsThePageWithASpacingOfTheUsersOwn) {
    RackModel& model = make(defaultLayout);
    EXPECT_EQ(model.spacing(), 60);
    EXPECT_FALSE(model.isAutomatic());
    EXPECT_EQ(model.islandWidth(), 230 + 150 + 230 + 2 * 60 + 64);
    model.flipPage(1);
    EXPECT_EQ(model.islandWidth(), 230 + 150 + 130 + 150 + 3 * 60 + 64);
    EXPECT_EQ(make("music").islandWidth(), 150 + 64);
}

TEST_F(RackModelTest, AutomaticSpacingNeverGoesBelowTheLeastWidth) {
    settings.set(SettingsKeys::widgetSpacingAutomatic, true);
    RackModel& model = make("music");
    EXPECT_TRUE(model.isAutomatic());
    EXPECT_EQ(model.customSpacing(), std::nullopt);
    EXPECT_EQ(model.spacing(), 20);
    EXPECT_EQ(model.spacingValue(), 60);
    EXPECT_EQ(model.islandWidth(), 520);
    EXPECT_EQ(make(defaultLayout).islandWidth(), 230 + 150 + 230 + 2 * 20 + 64);
}

TEST_F(RackModelTest, EmptyRackIs520WideByItselfAnd360WithASpacingOfTheUsersOwn) {
    RackModel& model = make("");
    EXPECT_EQ(model.pageCount(), 0);
    EXPECT_EQ(model.islandWidth(), 360);
    model.enterEditing();
    EXPECT_EQ(model.islandWidth(), 520);
    model.exitEditing();
    model.setAutomaticSpacing(true);
    EXPECT_EQ(model.islandWidth(), 520);
}

TEST_F(RackModelTest, FullPageAtTheLargestSpacingStaysWithinThePanel) {
    setSpacing(80);
    EXPECT_EQ(make("music,metronome,claude,claudeUsage,keepAwake").islandWidth(), 1134);
    EXPECT_EQ(make("music,metronome,claude,claudeUsage,meters").islandWidth(), 1114);
}

TEST_F(RackModelTest, SpacingOutsideItsRangeIsHeldToItAndNotRewritten) {
    setSpacing(3);
    EXPECT_EQ(make("music,meters").spacing(), 8);
    setSpacing(200);
    EXPECT_EQ(make("music,meters").spacing(), 80);
    EXPECT_EQ(settings.doubleValue(SettingsKeys::widgetSpacing), 200);
}

TEST_F(RackModelTest, EditingAndLibraryNeedTheLeastWidth) {
    RackModel& model = make("music");
    EXPECT_EQ(model.islandWidth(), 214);
    model.enterEditing();
    EXPECT_EQ(model.islandWidth(), 520);
    model.setShowingLibrary(true);
    EXPECT_EQ(model.islandWidth(), 520);
    model.exitEditing();
    EXPECT_EQ(model.islandWidth(), 214);
    EXPECT_THAT(widths, ElementsAre(520, 214));
}

TEST_F(RackModelTest, EnteringEditingTapsAndTellsOnce) {
    RackModel& model = make("music");
    model.enterEditing();
    model.enterEditing();
    EXPECT_TRUE(model.isEditing());
    EXPECT_THAT(editing, ElementsAre(true));
    EXPECT_THAT(haptics.performed, ElementsAre(HapticPattern::alignment));
    model.exitEditing();
    model.exitEditing();
    EXPECT_THAT(editing, ElementsAre(true, false));
    EXPECT_EQ(haptics.performed.size(), 1U);
}

TEST_F(RackModelTest, ExitingEditingClosesTheLibrary) {
    RackModel& model = make("music");
    model.enterEditing();
    model.setShowingLibrary(true);
    model.exitEditing();
    EXPECT_FALSE(model.isShowingLibrary());
}

TEST_F(RackModelTest, ExitingEditingDuringADragDropsItWithoutMovingAnything) {
    RackModel& model = make("music,meters:2,clock");
    model.enterEditing();
    model.drag(WidgetID::music, 2);
    ASSERT_EQ(preview(), "meters:2,clock,music");
    model.exitEditing();
    EXPECT_EQ(model.draggingID(), std::nullopt);
    EXPECT_EQ(model.previewIndex(), std::nullopt);
    EXPECT_EQ(preview(), "music,meters:2,clock");
    EXPECT_EQ(stored(), "music,meters:2,clock");
}

TEST_F(RackModelTest, EveryChangeOfTheLayoutIsKept) {
    RackModel& model = make("music");
    model.add(WidgetID::clock);
    EXPECT_EQ(stored(), "music,clock");
    model.add(WidgetID::meters, WidgetSize::wide);
    EXPECT_EQ(stored(), "music,clock,meters:2");
    model.remove(WidgetID::music);
    EXPECT_EQ(stored(), "clock,meters:2");
    model.setSize(WidgetID::meters, WidgetSize::small);
    EXPECT_EQ(stored(), "clock,meters");
    EXPECT_EQ(RackModel(settings, haptics).layout(), model.layout());
}

TEST_F(RackModelTest, EmptiedRackStaysEmptyInTheNextProgram) {
    make("music").remove(WidgetID::music);
    EXPECT_EQ(stored(), "");
    EXPECT_THAT(RackModel(settings, haptics).layout().entries, IsEmpty());
}

TEST_F(RackModelTest, ChangeThatChangesNothingIsNotTold) {
    RackModel& model = make("music");
    int changes = 0;
    QObject::connect(&model, &RackModel::changed, [&] { ++changes; });
    model.add(WidgetID::music);
    model.remove(WidgetID::clock);
    model.setSize(WidgetID::music, WidgetSize::small);
    model.setPage(0);
    model.settingsChanged();
    model.endDrag();
    model.didOpen();
    EXPECT_EQ(changes, 0);
    EXPECT_THAT(widths, IsEmpty());
}

TEST_F(RackModelTest, DeletingTheLastWidgetOfTheLastPageMovesOnePageBack) {
    RackModel& model = make("timer,music,metronome:2,clock");
    model.flipPage(1);
    ASSERT_EQ(model.page(), 1);
    model.remove(WidgetID::clock);
    EXPECT_EQ(model.page(), 0);
    EXPECT_EQ(model.pageCount(), 1);
}

TEST_F(RackModelTest, PageFollowsAWidgetThatAWiderSizePushesOverThePageBreak) {
    RackModel& model = make("timer,metronome:2,music");
    model.setSize(WidgetID::music, WidgetSize::wide);
    EXPECT_EQ(model.pageCount(), 2);
    EXPECT_EQ(model.page(), 1);
    model.setSize(WidgetID::music, WidgetSize::small);
    EXPECT_EQ(model.page(), 0);
}

TEST_F(RackModelTest, OnlyWidgetOfItsPageStaysThereInEitherSize) {
    RackModel& model = make("clock,music,meters,metronome,claude,keepAwake,claudeUsage");
    model.setSize(WidgetID::claude, WidgetSize::wide);
    EXPECT_EQ(model.page(), 1);
    EXPECT_EQ(model.pageCount(), 2);
}

TEST_F(RackModelTest, SizeOfAWidgetThatIsNotThereLeavesThePage) {
    RackModel& model = make(defaultLayout);
    model.flipPage(1);
    model.setSize(WidgetID::clock, WidgetSize::small);
    EXPECT_EQ(model.page(), 1);
}

TEST_F(RackModelTest, FlippingStopsAtEitherEnd) {
    RackModel& model = make(defaultLayout);
    model.flipPage(-1);
    EXPECT_EQ(model.page(), 0);
    model.flipPage(1);
    model.flipPage(1);
    EXPECT_EQ(model.page(), 1);
    model.flipPage(std::numeric_limits<int>::max());
    EXPECT_EQ(model.page(), 1);
    model.flipPage(std::numeric_limits<int>::min());
    EXPECT_EQ(model.page(), 0);
    EXPECT_THAT(widths, ElementsAre(904, 794));
}

TEST_F(RackModelTest, PageIsHeldToThoseThereAre) {
    RackModel& model = make(defaultLayout);
    model.setPage(99);
    EXPECT_EQ(model.page(), 1);
    model.setPage(-1);
    EXPECT_EQ(model.page(), 0);
    EXPECT_EQ(make("").page(), 0);
}

TEST_F(RackModelTest, PageSurvivesClosingAndOpening) {
    RackModel& model = make(defaultLayout);
    model.flipPage(1);
    model.didOpen();
    EXPECT_EQ(model.page(), 1);
}

TEST_F(RackModelTest, SteppingTheSpacingEndsAutomaticSpacing) {
    settings.set(SettingsKeys::widgetSpacingAutomatic, true);
    RackModel& model = make("music,meters");
    model.stepSpacing(-2);
    EXPECT_FALSE(model.isAutomatic());
    EXPECT_EQ(model.spacing(), 52);
    EXPECT_EQ(settings.doubleValue(SettingsKeys::widgetSpacing), 52);
    EXPECT_THAT(widths, ElementsAre(150 + 130 + 52 + 64));
}

TEST_F(RackModelTest, SteppingAtTheEndOfTheRangeStillEndsAutomaticSpacing) {
    setSpacing(80);
    settings.set(SettingsKeys::widgetSpacingAutomatic, true);
    RackModel& model = make("music");
    model.stepSpacing(1);
    EXPECT_EQ(model.spacing(), 80);
    EXPECT_FALSE(model.isAutomatic());
    setSpacing(8);
    model.settingsChanged();
    model.stepSpacing(-1);
    EXPECT_EQ(model.spacing(), 8);
}

TEST_F(RackModelTest, AutomaticSpacingKeepsTheStoredValueForLater) {
    setSpacing(44);
    RackModel& model = make("music");
    model.setAutomaticSpacing(true);
    EXPECT_EQ(model.spacing(), 20);
    EXPECT_EQ(model.spacingValue(), 44);
    model.setAutomaticSpacing(false);
    EXPECT_EQ(model.spacing(), 44);
}

TEST_F(RackModelTest, SpacingWrittenElsewhereIsTakenOver) {
    RackModel& model = make("music,meters");
    setSpacing(20);
    EXPECT_EQ(model.spacing(), 60);
    model.settingsChanged();
    EXPECT_EQ(model.spacing(), 20);
    EXPECT_THAT(widths, ElementsAre(364));
}

TEST_F(RackModelTest, DragShowsWhereTheWidgetWouldLandAndKeepsNothingYet) {
    RackModel& model = make("music,meters:2,clock");
    model.beginDrag(WidgetID::clock);
    EXPECT_EQ(model.draggingID(), WidgetID::clock);
    EXPECT_EQ(model.previewIndex(), std::nullopt);
    EXPECT_EQ(preview(), "music,meters:2,clock");
    model.drag(WidgetID::clock, 0);
    EXPECT_EQ(model.previewIndex(), 0);
    EXPECT_EQ(preview(), "clock,music,meters:2");
    EXPECT_EQ(stored(), "music,meters:2,clock");
}

TEST_F(RackModelTest, DropMovesTheWidgetForGood) {
    RackModel& model = make("music,meters:2,clock");
    model.drag(WidgetID::clock, 1);
    model.endDrag();
    EXPECT_EQ(stored(), "music,clock,meters:2");
    EXPECT_EQ(preview(), "music,clock,meters:2");
    EXPECT_EQ(model.draggingID(), std::nullopt);
    EXPECT_EQ(model.previewIndex(), std::nullopt);
}

TEST_F(RackModelTest, DragThatNeverMovedLeavesTheLayout) {
    RackModel& model = make("music,clock");
    model.beginDrag(WidgetID::clock);
    model.endDrag();
    EXPECT_EQ(stored(), "music,clock");
    EXPECT_EQ(model.draggingID(), std::nullopt);
}

TEST_F(RackModelTest, DragOfAnotherWidgetBeginsAgain) {
    RackModel& model = make("music,clock,meters");
    model.drag(WidgetID::music, 2);
    model.drag(WidgetID::meters, 0);
    EXPECT_EQ(model.draggingID(), WidgetID::meters);
    EXPECT_EQ(preview(), "meters,music,clock");
}

TEST_F(RackModelTest, DragFarOutsideActsLikeTheNearestPlaceOnThePage) {
    RackModel& model = make("timer,music,metronome:2,claude:2");
    model.drag(WidgetID::music, std::numeric_limits<int>::max());
    EXPECT_EQ(model.previewIndex(), 2) << "After both wide ones; further on it would open the next page.";
    model.drag(WidgetID::music, std::numeric_limits<int>::min());
    EXPECT_EQ(model.previewIndex(), 0);
}

TEST_F(RackModelTest, DragReportsTheWidthOfThePageAsShown) {
    // Pages: 2 2 1 | 2 1. With the small one in front the first page holds 1 2 2 as before; moving the widget
    // of the second page to its own front changes nothing; but a wide one dragged behind the small ones lets
    // them up.
    RackModel& model = make("timer,metronome:2,music,claude:2,clock");
    const double before = model.islandWidth();
    model.drag(WidgetID::timer, 99);
    EXPECT_EQ(preview(), "metronome:2,music,timer,claude:2,clock");
    EXPECT_EQ(model.islandWidth(), before);
    model.flipPage(1);
    model.drag(WidgetID::claude, 4);
    EXPECT_EQ(preview(), "timer,metronome:2,music,clock,claude:2");
    EXPECT_EQ(model.islandWidth(), 150 + 230 + 60 + 64);
    model.drag(WidgetID::timer, 4);
    EXPECT_EQ(preview(), "metronome:2,music,claude:2,clock,timer");
    EXPECT_THAT(widths, ElementsAre(504));
}

TEST_F(RackModelTest, FlipDuringADragGoesByThePagesAsShown) {
    RackModel& model = make(defaultLayout);
    model.beginDrag(WidgetID::timer);
    model.flipPage(1);
    EXPECT_EQ(model.page(), 1);
    model.drag(WidgetID::timer, 6);
    EXPECT_EQ(model.page(), 1);
    model.endDrag();
    EXPECT_EQ(stored(), "music,metronome:2,claude:2,claudeUsage,meters,keepAwake,timer");
}

TEST_F(RackModelTest, TellsEachChangeByItsOwnSignalAndTheCommonOne) {
    RackModel& model = make(defaultLayout);
    std::vector<std::string> log;
    QObject::connect(&model, &RackModel::layoutChanged, [&] { log.emplace_back("layout"); });
    QObject::connect(&model, &RackModel::pageChanged, [&] { log.emplace_back("page"); });
    QObject::connect(&model, &RackModel::isEditingChanged, [&] { log.emplace_back("editing"); });
    QObject::connect(&model, &RackModel::isShowingLibraryChanged, [&] { log.emplace_back("library"); });
    QObject::connect(&model, &RackModel::spacingChanged, [&] { log.emplace_back("spacing"); });
    QObject::connect(&model, &RackModel::islandWidthChanged, [&] { log.emplace_back("width"); });
    int changes = 0;
    QObject::connect(&model, &RackModel::changed, [&] { ++changes; });
    model.enterEditing();
    model.setShowingLibrary(true);
    model.flipPage(1);
    model.stepSpacing(1);
    model.remove(WidgetID::claude);
    EXPECT_THAT(log,
                ElementsAre("editing", "library", "page", "width", "spacing", "width", "width", "layout"));
    EXPECT_EQ(changes, 8);
}

TEST_F(RackModelTest, ObserverOfTheSettingsMayCallBackWhileTheLayoutIsKept) {
    RackModel& model = make("timer,music,metronome:2,clock");
    QObject::connect(&settings, &Defaults::changed, &model, &RackModel::settingsChanged);
    model.flipPage(1);
    model.remove(WidgetID::clock);
    EXPECT_EQ(model.page(), 0);
    EXPECT_EQ(model.islandWidth(), 794);
    EXPECT_EQ(widths.back(), 794);
}

TEST_F(RackModelTest, TheIslandIsNeverWiderThanItsScreen) {
    RackModel& model = make(defaultLayout);
    const double wanted = model.islandWidth();
    ASSERT_GT(wanted, 720);
    model.setScreenWidth(720);
    EXPECT_EQ(model.islandWidth(), 720);
    EXPECT_THAT(widths, ElementsAre(720));
    model.setScreenWidth(3000);
    EXPECT_EQ(model.islandWidth(), wanted);
    EXPECT_EQ(model.widthLimit(), 1134);
    model.setScreenWidth(400);
    EXPECT_EQ(model.islandWidth(), 294) << "of its first page only the timer has room";
    model.setAutomaticSpacing(true);
    EXPECT_EQ(model.islandWidth(), 400) << "not even for the least width of an automatic rack";
}

TEST_F(RackModelTest, WhatANarrowScreenHasNoRoomForIsOnFurtherPages) {
    // Pages of 230 + 150 + 230 and 230 + 150 + 130 + 150 points, and gaps of 8 at least.
    RackModel& model = make(defaultLayout);
    ASSERT_EQ(model.pageCount(), 2);
    model.setScreenWidth(64 + 626);
    EXPECT_EQ(model.pageCount(), 3) << "the second page has no room for its last widget";
    model.setScreenWidth(64 + 300);
    EXPECT_EQ(model.pageCount(), 6) << "only a small one of 150 and the meters fit side by side";
    EXPECT_EQ(model.layout().storedValue(), defaultLayout) << "what is kept stays as it is";
    model.setPage(5);
    ASSERT_EQ(model.page(), 5);
    model.setScreenWidth(1920);
    EXPECT_EQ(model.pageCount(), 2);
    EXPECT_EQ(model.page(), 1) << "the page is held to those that this screen has";
}

TEST_F(RackModelTest, OnANarrowScreenADragStaysOnItsPageToo) {
    RackModel& model = make("music,claude:1,claudeUsage,keepAwake");
    model.setScreenWidth(64 + 308);
    ASSERT_EQ(model.pageCount(), 2);
    model.drag(WidgetID::music, 3);
    EXPECT_EQ(model.previewIndex(), 1);
    model.setPage(1);
    model.drag(WidgetID::music, 0);
    EXPECT_EQ(model.previewIndex(), 2);
}

TEST_F(RackModelTest, WhateverIsDoneOnWhateverScreenTheRackKeepsItsRules) {
    std::mt19937 random(3); // NOLINT(cert-msc32-c,cert-msc51-cpp): a test has to be repeatable
    const auto below = [&random](int count) {
        return static_cast<int>(random() % static_cast<unsigned>(count));
    };
    const auto anyId = [&] { return allWidgetIDs.at(static_cast<std::size_t>(below(8))); };
    const auto anySize = [&] { return below(2) == 0 ? WidgetSize::small : WidgetSize::wide; };
    for (int program = 0; program < 20; ++program) {
        // Each reads what the last one kept.
        RackModel model(settings, haptics);
        for (int step = 0; step < 200; ++step) {
            switch (below(12)) {
            case 0:
                model.add(anyId(), anySize());
                break;
            case 1:
                model.remove(anyId());
                break;
            case 2:
                model.setSize(anyId(), anySize());
                break;
            case 3:
                model.drag(anyId(), below(12) - 2);
                break;
            case 4:
                model.endDrag();
                break;
            case 5:
                model.flipPage(below(5) - 2);
                break;
            case 6:
                model.setScreenWidth(200 + below(1300));
                break;
            case 7:
                model.stepSpacing(below(9) - 4);
                break;
            case 8:
                model.setAutomaticSpacing(below(2) == 0);
                break;
            case 9:
                model.enterEditing();
                break;
            case 10:
                model.exitEditing();
                break;
            default:
                model.setPage(below(6) - 1);
                break;
            }
            const auto ids = model.layout().ids();
            ASSERT_EQ(std::set<WidgetID>(ids.begin(), ids.end()).size(), ids.size());
            ASSERT_EQ(WidgetLayout::fromStoredValue(model.layout().storedValue()), model.layout());
            ASSERT_EQ(settings.stringValue(SettingsKeys::widgetLayout).value_or(defaultLayout),
                      model.layout().storedValue());
            ASSERT_GE(model.page(), 0);
            ASSERT_TRUE(model.draggingID() || model.page() < std::max(model.pageCount(), 1));
            ASSERT_LE(model.islandWidth(), model.widthLimit());
            ASSERT_GE(model.islandWidth(), 0);
            ASSERT_EQ(model.frames().size(), model.shownPage().size());
            const auto frames = model.frames();
            if (frames.size() > 1) {
                ASSERT_GE(frames.front().x, -1e-6);
                ASSERT_LE(frames.back().x + frames.back().width, model.width() + 1e-6);
            }
        }
    }
}

TEST_F(RackModelTest, AnArrangementThatSomebodyElseStoresIsTakenOver) {
    RackModel& model = make("timer,music");
    model.enterEditing();
    settings.set(SettingsKeys::widgetLayout, "clock,music,meters");
    model.settingsChanged();
    EXPECT_THAT(model.layout().ids(), ElementsAre(WidgetID::clock, WidgetID::music, WidgetID::meters));
    EXPECT_EQ(widths.back(), model.islandWidth());
    model.remove(WidgetID::music);
    EXPECT_EQ(settings.stringValue(SettingsKeys::widgetLayout), "clock,meters") << "it is no longer the old";
}
