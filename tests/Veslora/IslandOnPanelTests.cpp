// SPDX-License-Identifier: MIT
// The island as users have it, on every form of the panel: its own views, its controller and this platform's
// seams, on a private desktop.
#include "VesloraLinux/LinuxPlatform.h"
#include "VesloraLinux/X11/PanelPlacement.h"
#include "VesloraLinux/X11/X11Panel.h"
#include "VesloraUI/Island/NotchWindowController.h"
#include "VesloraUI/Store/AlertPausing.h"
#include "VesloraUI/Store/Defaults.h"
#include "VesloraUI/Style/ViewEnvironment.h"
#include "VesloraUI/Style/Views.h"
#include "VesloraUI/Support/QtTextMeasuring.h"
#include "tests/VesloraLinux/Support/Bystander.h"
#include "tests/VesloraLinux/Support/Desktop.h"
#include "tests/VesloraLinux/Support/Waiting.h"
#include "tests/VesloraUI/Fixtures/FakeMonitor.h"
#include "tests/support/FixedCalendar.h"

#include <QQmlEngine>

#include <gtest/gtest.h>
#include <xcb/shape.h>

#include <algorithm>

namespace veslora {
namespace {

using testing::Bystander;
using testing::Desktop;
using testing::handleEventsFor;
using testing::waitUntil;

struct Setting {
    PanelForm form = PanelForm::shaped;
    const char* scale = "1";
    double ratio = 1;
};

class IslandOnPanel {
  public:
    explicit IslandOnPanel(const Setting& setting, bool hasCompositor = false)
        : m_setting(setting),
          desktop({.scale = setting.scale, .hasWindowManager = true, .hasCompositor = hasCompositor}),
          platform(makePlatform(setting.form)) {
        desktop.movePointerTo(20, 700);
        SettingsKeys::registerDefaults(settings);
        settings.set(SettingsKeys::hoverDelay, 0.0);
        prepareEngine(engine, environment);
        controller.start();
        QObject::connect(&window(), &QQuickWindow::afterRendering, &window(), [this] { ++frames; });
        for (const auto moved :
             {&QWindow::xChanged, &QWindow::yChanged, &QWindow::widthChanged, &QWindow::heightChanged}) {
            QObject::connect(&window(), moved, &window(), [this] { ++placements; });
        }
    }
    IslandOnPanel(const IslandOnPanel&) = delete;
    IslandOnPanel& operator=(const IslandOnPanel&) = delete;
    ~IslandOnPanel() { controller.stop(); }

    [[nodiscard]] QQuickWindow& window() const { return *platform->seams().panel.window(); }
    [[nodiscard]] bool isOpen() const { return controller.model()->isOpen(); }
    /// Where the window lies, in native pixels.
    [[nodiscard]] QRect nativeFrame() {
        desktop.settle();
        xcb_connection_t* const xcb = desktop.connection().xcb();
        const auto cookie = xcb_get_geometry(xcb, static_cast<xcb_window_t>(window().winId()));
        const X11Reply<xcb_get_geometry_reply_t> reply(xcb_get_geometry_reply(xcb, cookie, nullptr));
        return {reply->x, reply->y, reply->width, reply->height};
    }
    /// The native pixels over which the closed island opens.
    [[nodiscard]] QRect hotPixels() const {
        const ScreenInfo screen = platform->seams().screens.list().front();
        const QRect whole(0, 0, 1600, 900);
        return PanelPlacement::nativeRegion(screen, {*controller.tracker()->hotZone()}, whole).boundingRect();
    }
    /// Where the window lies while the island is closed and at rest, to a pixel.
    [[nodiscard]] QRect restingFrame() const {
        const ScreenInfo screen = platform->seams().screens.list().front();
        const Rect area = m_setting.form == PanelForm::shaped ? controller.tracker()->geometry().windowFrame()
                                                              : *controller.tracker()->hotZone();
        const QRect place =
            PanelPlacement::windowFor(screen, PanelPlacement::intersection(area, screen.metrics.frame));
        return QRectF(place.x() * screen.scale, place.y() * screen.scale, place.width() * screen.scale,
                      place.height() * screen.scale)
            .toAlignedRect();
    }
    [[nodiscard]] bool comesToRest() {
        return waitUntil([this] {
            const QRect is = nativeFrame();
            const QRect should = restingFrame();
            return std::abs(is.left() - should.left()) <= 1 && std::abs(is.width() - should.width()) <= 2 &&
                   std::abs(is.height() - should.height()) <= 2;
        });
    }
    /// Whether the server gives a press on that native pixel to the island's window.
    [[nodiscard]] bool takesPressesAt(QPoint pixel) {
        const QPoint place = pixel - nativeFrame().topLeft();
        xcb_connection_t* const xcb = desktop.connection().xcb();
        const auto cookie =
            xcb_shape_get_rectangles(xcb, static_cast<xcb_window_t>(window().winId()), XCB_SHAPE_SK_INPUT);
        const X11Reply<xcb_shape_get_rectangles_reply_t> reply(
            xcb_shape_get_rectangles_reply(xcb, cookie, nullptr));
        const xcb_rectangle_t* const first = xcb_shape_get_rectangles_rectangles(reply.get());
        return std::any_of(first, first + reply->rectangles_len, [place](const xcb_rectangle_t& rect) {
            return QRect(rect.x, rect.y, rect.width, rect.height).contains(place);
        });
    }
    [[nodiscard]] bool opensAt(QPoint pixel) {
        desktop.movePointerTo(pixel.x(), pixel.y());
        return waitUntil([this] { return isOpen(); });
    }
    [[nodiscard]] bool closesAway() {
        desktop.movePointerTo(20, 700);
        return waitUntil([this] { return !isOpen(); }) && comesToRest();
    }

  private:
    static std::unique_ptr<LinuxPlatform> makePlatform(PanelForm form) {
        qputenv("XDG_SESSION_TYPE", form == PanelForm::shrinking ? "wayland" : "x11");
        return LinuxPlatform::make();
    }

    Setting m_setting;

  public:
    Desktop desktop;
    std::unique_ptr<LinuxPlatform> platform;
    Defaults settings{platform->seams().files, platform->seams().directoryWatcher,
                      platform->seams().directories.configuration};
    AlertPausing pausing{settings, platform->seams().scheduler, platform->seams().doNotDisturb,
                         test::fixedCalendar()};
    ViewEnvironment environment{platform->seams().scheduler,
                                platform->seams().frameClock,
                                settings,
                                platform->seams().haptics,
                                platform->seams().sounds,
                                platform->seams().scrollDevices,
                                platform->seams().automation,
                                platform->seams().appearance,
                                platform->seams().screens,
                                pausing};
    QQmlEngine engine;
    QtTextMeasuring measuring;
    FakeMonitor claude;
    FakeMonitor codex{AgentKind::codex};
    AgentsModel agents{{&claude, &codex}};
    NotchWindowController controller{
        platform->seams(), measuring, settings, agents,
        [this](NotchViewModel& model) { return makeIslandContent(engine, model); }};
    int frames = 0;
    int placements = 0;
};

/// Also the end of each test's name.
void PrintTo(const Setting& setting, std::ostream* stream) {
    *stream << (setting.form == PanelForm::shaped ? "ShapedAt" : "ShrinkingAt")
            << static_cast<int>(setting.ratio * 100);
}

class IslandOnPanelTests : public ::testing::TestWithParam<Setting> {
  protected:
    /// The toolkit's clock of animations outlives an application object and trips over the next one, so that
    /// each test has a process to itself.
    static void inOwnProcess(const std::function<void()>& body) {
        GTEST_FLAG_SET(death_test_style, "threadsafe");
        const auto run = [&body] {
            body();
            // That process does not report; what it says on this stream becomes part of the failure here.
            const auto& result = *::testing::UnitTest::GetInstance()->current_test_info()->result();
            for (int i = 0; i < result.total_part_count(); ++i) {
                const ::testing::TestPartResult& part = result.GetTestPartResult(i);
                std::fprintf(stderr, "line %d: %s\n", part.line_number(), part.message());
            }
            std::_Exit(HasFailure() ? 1 : 0);
        };
        EXPECT_EXIT(run(), ::testing::ExitedWithCode(0), "");
    }
};

INSTANTIATE_TEST_SUITE_P(
    EveryForm, IslandOnPanelTests,
    ::testing::Values(Setting{PanelForm::shaped, "1", 1}, Setting{PanelForm::shaped, "1.5", 1.5},
                      Setting{PanelForm::shaped, "2", 2}, Setting{PanelForm::shrinking, "1", 1},
                      Setting{PanelForm::shrinking, "1.25", 1.25}, Setting{PanelForm::shrinking, "1.5", 1.5},
                      Setting{PanelForm::shrinking, "1.75", 1.75}, Setting{PanelForm::shrinking, "2", 2}),
    ::testing::PrintToStringParamName());

TEST_P(IslandOnPanelTests, ClosedItRestsInsteadOfChasingItself) {
    inOwnProcess([] {
        IslandOnPanel x(GetParam());
        ASSERT_TRUE(x.comesToRest()) << x.nativeFrame().x() << " " << x.nativeFrame().width();
        handleEventsFor(150);
        x.frames = x.placements = 0;
        handleEventsFor(250);
        EXPECT_EQ(x.frames, 0);
        EXPECT_EQ(x.placements, 0);
    });
}

TEST_P(IslandOnPanelTests, OpensWhereverThePointerRestsOnItAndClosesAgain) {
    inOwnProcess([] {
        IslandOnPanel x(GetParam());
        ASSERT_TRUE(x.comesToRest());
        const QRect hot = x.hotPixels();
        for (const QPoint pixel :
             {hot.center(), hot.topLeft(), hot.topRight(), hot.bottomLeft(), hot.bottomRight()}) {
            ASSERT_TRUE(x.opensAt(pixel)) << pixel.x() << " " << pixel.y();
            ASSERT_TRUE(x.closesAway()) << pixel.x() << " " << pixel.y();
        }
        for (const QPoint pixel :
             {QPoint(hot.left() - 1, 5), QPoint(hot.right() + 1, 5), QPoint(800, hot.bottom() + 1)}) {
            x.desktop.movePointerTo(pixel.x(), pixel.y());
            handleEventsFor(50);
            EXPECT_FALSE(x.isOpen()) << pixel.x() << " " << pixel.y();
        }
    });
}

TEST_P(IslandOnPanelTests, IsDrawnUnderWhatTakesTheClicks) {
    inOwnProcess([] {
        IslandOnPanel x(GetParam(), true);
        x.settings.set(SettingsKeys::hideInFullscreen, false);
        const double ratio = GetParam().ratio;
        const Bystander window({.frame = {0, 0, 1600, 900}, .color = Qt::green, .isFullscreen = true});
        ASSERT_TRUE(x.comesToRest());
        const auto at = [&x, ratio](double points) {
            return x.desktop.pixelAt(static_cast<int>(800 + points * ratio), static_cast<int>(10 * ratio));
        };
        EXPECT_TRUE(waitUntil([&] {
            return at(-98) == QColor(Qt::black) && at(98) == QColor(Qt::black) &&
                   at(-102) == QColor(Qt::green) && at(102) == QColor(Qt::green);
        }));
        ASSERT_TRUE(x.opensAt({800, 5}));
        const double half = x.controller.model()->islandWidth() / 2 - 12;
        EXPECT_TRUE(waitUntil(
            [&] { return at(2 - half) == QColor(Qt::black) && at(half - 2) == QColor(Qt::black); }));
    });
}

TEST_P(IslandOnPanelTests, StepsAsideWhileAWindowFillsTheScreenButForAnAlert) {
    inOwnProcess([] {
        IslandOnPanel x(GetParam());
        ASSERT_TRUE(x.comesToRest());
        const bool seesWindows = GetParam().form == PanelForm::shaped;
        const auto goesAside = [&] {
            return waitUntil([&] { return !x.window().isVisible(); },
                             seesWindows ? testing::patienceMilliseconds : 500);
        };
        {
            const Bystander window({.frame = {0, 0, 1600, 900}, .isFullscreen = true});
            EXPECT_EQ(goesAside(), seesWindows);
            x.claude.publish({}, {FakeMonitor::request("r1", x.platform->seams().scheduler.now())});
            EXPECT_TRUE(
                waitUntil([&] { return x.window().isVisible() && x.controller.model()->isAlertOnScreen(); }));
            x.claude.publish({}, {});
            EXPECT_EQ(goesAside(), seesWindows);
        }
        EXPECT_TRUE(waitUntil([&] { return x.window().isVisible(); }));
    });
}

TEST_P(IslandOnPanelTests, AnAlertThatEndsUnderAHeldButtonKeepsNoClicksAfterItsRelease) {
    inOwnProcess([] {
        IslandOnPanel x(GetParam());
        x.settings.set(SettingsKeys::hideInFullscreen, false);
        const double ratio = GetParam().ratio;
        Bystander window({.frame = {0, 0, 1600, 900}, .isFullscreen = true});
        ASSERT_TRUE(x.comesToRest());
        x.claude.publish({}, {FakeMonitor::request("r1", x.platform->seams().scheduler.now())});
        ASSERT_TRUE(waitUntil([&] { return x.controller.model()->isAlertOnScreen(); }));
        const QPoint onAlert(static_cast<int>(800 - 200 * ratio), static_cast<int>(45 * ratio));
        ASSERT_TRUE(waitUntil([&] { return x.takesPressesAt(onAlert); }));
        x.desktop.movePointerTo(onAlert.x(), onAlert.y());
        x.desktop.press();
        ASSERT_TRUE(waitUntil([&] { return x.platform->seams().pointer.isButtonDown(); }));
        x.claude.publish({}, {});
        handleEventsFor(50);
        EXPECT_TRUE(x.takesPressesAt(onAlert)) << "a press in progress is never cut off";
        // The pointer stays where it is: no movement tells the island to look again.
        x.desktop.release();
        EXPECT_TRUE(waitUntil([&] { return !x.takesPressesAt(onAlert); }, 3000));
        EXPECT_EQ(window.presses(), 0);
        x.desktop.click();
        EXPECT_TRUE(waitUntil([&] { return window.presses() == 1; }, 3000));
    });
}

} // namespace
} // namespace veslora
