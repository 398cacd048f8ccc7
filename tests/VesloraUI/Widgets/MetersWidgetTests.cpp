// SPDX-License-Identifier: MIT
// The meters widget, drawn, with a machine that says what a test put into it.
#include "VesloraUI/Style/VesloraStyle.h"
#include "VesloraUI/Widgets/MetersWidgetPresenter.h"
#include "tests/VesloraUI/Fixtures/Scene.h"

#include <QSignalSpy>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veslora {
namespace {

using testing::ElementsAre;

constexpr std::uint64_t gibibyte = std::uint64_t{1} << 30;
constexpr std::uint64_t gigabyte = 1'000'000'000;
constexpr double interval = SystemSampler::usualInterval;

class MetersWidgetTest : public testing::Test {
  protected:
    void SetUp() override {
        machine.counted = CPUTicks{};
        machine.memory = MemoryPages{gibibyte / 10 * 98, 0, 0, 0, 1};
        machine.power = BatteryReading{0.78, false, false, {}, 252};
        machine.volume = DiskCapacity{1'000 * gigabyte, 560 * gigabyte};
    }

    void showWidget(bool isWide) {
        scene.show("Widgets/MetersWidget.qml",
                   {{"sampler", QVariant::fromValue(&scene.sampler)}, {"isWide", isWide}},
                   {isWide ? 230 : 130, 112});
    }
    /// Lets the processor be so busy until the next sample, in hundredths.
    void work(std::uint64_t user, std::uint64_t system) {
        machine.counted->user += user;
        machine.counted->system += system;
        machine.counted->idle += 100 - user - system;
        scene.advance(interval);
    }
    [[nodiscard]] QRectF placeOf(const QQuickItem* item) const {
        return item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
    }
    [[nodiscard]] QRectF placeOf(const QString& name) const {
        const auto* item = scene.itemNamed(name);
        EXPECT_TRUE(item) << name.toStdString();
        return item ? placeOf(item) : QRectF();
    }
    [[nodiscard]] QRgb colorOf(const QString& name) const {
        return scene.itemNamed(name)->property("color").value<QColor>().rgb();
    }
    /// The meter on the line of a label.
    [[nodiscard]] QQuickItem* meterOf(const QString& label) const {
        for (QQuickItem* item : scene.itemNamed(label)->parentItem()->childItems()) {
            if (item->property("segments").isValid()) {
                return item;
            }
        }
        return nullptr;
    }

    Scene scene;
    FakeSystemReadings& machine = scene.platform.readings;
};

TEST_F(MetersWidgetTest, AtFirstTheProcessorHasNoFigure) {
    showWidget(true);
    EXPECT_THAT(scene.texts(), ElementsAre("System", "CPU", "--", "USER -- · SYS --", "MEM", "61%",
                                           "9.8 / 16 GB", "BAT", "78%", "4:12 LEFT"));
    EXPECT_EQ(meterOf("CPU")->property("lit"), 0);
    work(15, 8);
    EXPECT_THAT(scene.texts(), ElementsAre("System", "CPU", "23%", "USER 15% · SYS 8%", "MEM", "61%",
                                           "9.8 / 16 GB", "BAT", "78%", "4:12 LEFT"));
    EXPECT_EQ(meterOf("CPU")->property("lit"), 5);
}

TEST_F(MetersWidgetTest, TheSmallOneHasNoDetails) {
    showWidget(false);
    work(15, 8);
    EXPECT_THAT(scene.texts(), ElementsAre("System", "CPU", "23%", "MEM", "61%", "BAT", "78%"));
}

TEST_F(MetersWidgetTest, EverythingCanBeFoundByItsName) {
    showWidget(true);
    EXPECT_EQ(scene.names(), scene.texts());
    scene.close();
    showWidget(false);
    EXPECT_EQ(scene.names(), scene.texts());
}

TEST_F(MetersWidgetTest, WithoutABatteryTheDiskIsThere) {
    machine.power.reset();
    showWidget(true);
    EXPECT_THAT(scene.texts(), ElementsAre("System", "CPU", "--", "USER -- · SYS --", "MEM", "61%",
                                           "9.8 / 16 GB", "DSK", "44%", "440 / 1000 GB"));
    scene.close();
    showWidget(false);
    EXPECT_THAT(scene.texts(), ElementsAre("System", "CPU", "--", "MEM", "61%", "DSK", "44%"));
}

TEST_F(MetersWidgetTest, ABatteryThatComesTakesTheDisksPlace) {
    machine.power.reset();
    showWidget(false);
    const auto* cpu = scene.itemNamed("CPU");
    machine.power = BatteryReading{0.5, true, true, {}, {}};
    scene.advance(interval);
    EXPECT_THAT(scene.texts(), ElementsAre("System", "CPU", "--", "MEM", "61%", "BAT", "50%"));
    EXPECT_EQ(scene.itemNamed("CPU"), cpu);
}

TEST_F(MetersWidgetTest, AMachineThatTellsNothingHasNoFigures) {
    machine.counted.reset();
    machine.memory.reset();
    machine.power.reset();
    machine.volume.reset();
    machine.physical.reset();
    SystemSampler blind(scene.platform.time, machine);
    scene.show("Widgets/MetersWidget.qml", {{"sampler", QVariant::fromValue(&blind)}, {"isWide", true}},
               {230, 112});
    EXPECT_THAT(scene.texts(), ElementsAre("System", "CPU", "--", "USER -- · SYS --", "MEM", "--", "0 / 0 GB",
                                           "DSK", "--", "0 / 0 GB"));
    for (const char* label : {"CPU", "MEM", "DSK"}) {
        EXPECT_EQ(meterOf(label)->property("lit"), 0) << label;
    }
    scene.close();
}

TEST_F(MetersWidgetTest, AFullMemoryReadsAsAllOfIt) {
    machine.memory->internalPages = 16 * gibibyte;
    showWidget(true);
    EXPECT_TRUE(scene.shows("16 / 16 GB"));
    EXPECT_TRUE(scene.shows("100%"));
    EXPECT_EQ(meterOf("MEM")->property("lit"), 20);
}

TEST_F(MetersWidgetTest, WhatCallsForAttentionIsInTheUrgentColour) {
    showWidget(true);
    machine.power = BatteryReading{0.05, false, false, {}, 21};
    machine.memory->internalPages = 15 * gibibyte;
    work(71, 24);
    const QRgb urgent = qRgb(255, 77, 46);
    for (const auto& [label, figure] :
         std::vector<std::pair<QString, QString>>{{"CPU", "95%"}, {"MEM", "94%"}, {"BAT", "5%"}}) {
        EXPECT_EQ(colorOf(figure), urgent) << label.toStdString();
        EXPECT_EQ(meterOf(label)->property("tint").value<QColor>().rgb(), urgent) << label.toStdString();
    }
    EXPECT_EQ(colorOf("0:21 LEFT"), VesloraStyle::textSecondary().rgb());
    scene.settings.set("accent", std::string("cyan"));
    EXPECT_EQ(colorOf("95%"), qRgb(255, 77, 106));
}

TEST_F(MetersWidgetTest, WhatDoesNotIsInTheAccent) {
    showWidget(true);
    machine.power = BatteryReading{0.05, true, true, 95, {}};
    work(80, 10);
    const QRgb accent = qRgb(200, 255, 61);
    for (const auto& [label, figure] :
         std::vector<std::pair<QString, QString>>{{"CPU", "90%"}, {"MEM", "61%"}, {"BAT", "5%"}}) {
        EXPECT_EQ(colorOf(figure), VesloraStyle::textPrimary().rgb()) << label.toStdString();
        EXPECT_EQ(meterOf(label)->property("tint").value<QColor>().rgb(), accent) << label.toStdString();
        EXPECT_EQ(colorOf(label), VesloraStyle::textSecondary().rgb()) << label.toStdString();
    }
    EXPECT_TRUE(scene.shows("CHARGING · 1:35 TO FULL"));
    scene.settings.set("accent", std::string("amber"));
    EXPECT_EQ(meterOf("CPU")->property("tint").value<QColor>().rgb(), qRgb(255, 176, 32));
}

TEST_F(MetersWidgetTest, AFullDiskIsNotUrgent) {
    machine.power.reset();
    machine.volume->available = 0;
    showWidget(false);
    EXPECT_EQ(colorOf("100%"), VesloraStyle::textPrimary().rgb());
}

TEST_F(MetersWidgetTest, TheMachineIsReadOnlyWhileItIsOnScreen) {
    const int before = machine.reads;
    scene.platform.advance(60);
    EXPECT_EQ(machine.reads, before);
    showWidget(true);
    EXPECT_GT(machine.reads, before);
    auto* widget = qobject_cast<QQuickItem*>(&scene.view());
    widget->setVisible(false);
    const int hidden = machine.reads;
    scene.advance(60);
    EXPECT_EQ(machine.reads, hidden);
    widget->setVisible(true);
    EXPECT_GT(machine.reads, hidden) << "figures with the first frame";
    scene.close();
    const int closed = machine.reads;
    scene.platform.advance(60);
    EXPECT_EQ(machine.reads, closed);
}

TEST_F(MetersWidgetTest, OutsideOfAWindowItReadsNothing) {
    showWidget(true);
    auto* widget = qobject_cast<QQuickItem*>(&scene.view());
    widget->setParentItem(nullptr);
    const int before = machine.reads;
    scene.platform.advance(60);
    EXPECT_EQ(machine.reads, before);
}

TEST_F(MetersWidgetTest, ASamplerThatGoesFirstIsNoMatter) {
    auto gone = std::make_unique<SystemSampler>(scene.platform.time, machine);
    MetersWidgetPresenter presenter;
    presenter.setSampler(gone.get());
    presenter.setOnScreen(true);
    presenter.componentComplete();
    gone.reset();
    presenter.setOnScreen(false);
    presenter.setOnScreen(true);
    EXPECT_EQ(scene.platform.time.pending(), 0U);
}

TEST_F(MetersWidgetTest, AFigureThatMovesMovesOnlyItsRow) {
    showWidget(true);
    work(15, 8);
    const auto* memory = scene.itemNamed("61%");
    auto* presenter = scene.view().findChild<MetersWidgetPresenter*>();
    ASSERT_TRUE(presenter);
    QSignalSpy rows(presenter->rows(), &QAbstractItemModel::dataChanged);
    work(15, 8);
    EXPECT_EQ(rows.count(), 0);
    work(16, 8);
    ASSERT_EQ(rows.count(), 1);
    EXPECT_EQ(rows[0][0].toModelIndex().row(), 0);
    EXPECT_EQ(scene.itemNamed("61%"), memory);
    EXPECT_TRUE(scene.shows("24%"));
}

// Points from the widget's top left corner.
TEST_F(MetersWidgetTest, WideRowsLieWhereTheyShould) {
    showWidget(true);
    work(15, 8);
    EXPECT_EQ(placeOf("System").topLeft(), QPointF(0, 0));
    double top = 16;
    for (const QString label : {"CPU", "MEM", "BAT"}) {
        EXPECT_EQ(placeOf(label), QRectF(0, top + 1, 26, 12)) << top;
        top += 31;
    }
    EXPECT_EQ(placeOf("23%"), QRectF(194, 16, 36, 14));
    EXPECT_EQ(placeOf("USER 15% · SYS 8%").topLeft(), QPointF(32, 31));
    EXPECT_EQ(placeOf("4:12 LEFT").bottom(), 105);
    EXPECT_EQ(placeOf(meterOf("MEM")), QRectF(32, 50, 156, 7));
    EXPECT_EQ(meterOf("MEM")->property("segments"), 20);
}

TEST_F(MetersWidgetTest, SmallRowsLieWhereTheyShould) {
    showWidget(false);
    work(15, 8);
    double top = 16;
    for (const QString label : {"CPU", "MEM", "BAT"}) {
        EXPECT_EQ(placeOf(label), QRectF(0, top + 8, 26, 12)) << top;
        EXPECT_EQ(placeOf(meterOf(label)), QRectF(32, top + 9, 56, 10)) << top;
        top += 32;
    }
    EXPECT_EQ(placeOf("23%"), QRectF(94, 23, 36, 14));
    EXPECT_EQ(meterOf("CPU")->property("segments"), 10);
}

TEST_F(MetersWidgetTest, TheLongestDetailFits) {
    machine.power = BatteryReading{0.05, true, true, 10 * 24 * 60, {}};
    showWidget(true);
    const auto* detail = scene.itemNamed("CHARGING · 240:00 TO FULL");
    ASSERT_TRUE(detail);
    EXPECT_EQ(detail->property("truncated"), false);
}

TEST_F(MetersWidgetTest, TheRackHoldsItInEitherSizeAndTheClockBesideIt) {
    for (const auto& [layout, detail] :
         std::vector<std::pair<std::string, bool>>{{"clock,meters", false}, {"clock,meters:2", true}}) {
        scene.settings.set("widgetLayout", layout);
        RackModel rack(scene.settings, scene.platform.taps);
        scene.showRack(rack, {456, 112});
        EXPECT_TRUE(scene.shows("MEM")) << layout;
        EXPECT_EQ(scene.shows("9.8 / 16 GB"), detail) << layout;
        EXPECT_FALSE(scene.shows("Meters")) << layout;
        EXPECT_FALSE(scene.shows("Clock")) << layout;
        scene.close();
    }
}

} // namespace
} // namespace veslora
