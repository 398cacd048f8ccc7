// SPDX-License-Identifier: MIT
// A private desktop with a panel on it, and content that tells what reached it.
#pragma once

#include "VesloraLinux/X11/X11Panel.h"
#include "tests/VesloraLinux/Support/Bystander.h"
#include "tests/VesloraLinux/Support/Desktop.h"
#include "tests/VesloraLinux/Support/Waiting.h"

#include <QPainter>
#include <QQuickPaintedItem>

namespace veslora::testing {

/// A red island of a given size at the top centre of its item, with a blue mark on it; the rest of the item
/// is clear.
class TestIsland : public QQuickPaintedItem {
  public:
    TestIsland() { setAcceptedMouseButtons(Qt::AllButtons); }

    void setIsland(const QSizeF& size) {
        m_size = size;
        update();
    }
    [[nodiscard]] QPainterPath outline() const {
        QPainterPath path;
        path.addRect(QRectF((width() - m_size.width()) / 2, 0, m_size.width(), m_size.height()));
        return path;
    }

    int presses = 0;
    QPointF lastPress;
    std::uint32_t lastPressTime = 0; ///< by the event's own stamp
    int frames = 0;

  protected:
    void paint(QPainter* painter) override {
        ++frames;
        painter->fillPath(outline(), Qt::red);
        painter->fillRect(QRectF(width() / 2 - 10, 14, 20, 10), Qt::blue);
    }
    void mousePressEvent(QMouseEvent* event) override {
        ++presses;
        lastPressTime = static_cast<std::uint32_t>(event->timestamp());
        lastPress = event->position();
    }

  private:
    QSizeF m_size{200, 32};
};

class PanelDesktop {
  public:
    explicit PanelDesktop(const DesktopOptions& options = {}, PanelForm form = PanelForm::shaped)
        : desktop(options), panel(desktop.connection(), screens, form) {
        panel.setContent(&island);
        panel.setOutline([this] { return island.outline(); });
        placeOn(screens.list().front());
    }
    ~PanelDesktop() { panel.setContent(nullptr); }
    PanelDesktop(const PanelDesktop&) = delete;
    PanelDesktop& operator=(const PanelDesktop&) = delete;

    /// At the top centre, 600 by 200 points.
    void placeOn(const ScreenInfo& screen) {
        frame = {screen.metrics.frame.midX() - 300, screen.metrics.frame.maxY() - 200, 600, 200};
        panel.place(screen, frame);
    }
    /// Shows the panel and waits for its first picture.
    void show() {
        panel.orderFront();
        waitUntil([this] { return island.frames > 0; });
        desktop.settle();
    }
    /// The zone that a closed island of 200 by 32 points would have if it took clicks.
    [[nodiscard]] Rect islandZone() const { return {frame.midX() - 100, frame.maxY() - 32, 200, 32}; }

    /// The bounding or input shape of the window as the server has it.
    [[nodiscard]] std::vector<QRect> shape(std::uint8_t kind);
    /// Where the window lies on the whole desktop, in native pixels.
    [[nodiscard]] QRect nativeFrame();
    /// Whether no other viewable window that overlaps the panel lies above it.
    [[nodiscard]] bool isOnTop();

    Desktop desktop;
    X11Screens screens{desktop.connection()};
    TestIsland island;
    X11Panel panel;
    Rect frame;
};

} // namespace veslora::testing
