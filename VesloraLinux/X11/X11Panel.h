// SPDX-License-Identifier: MIT
// The island's window on X: override-redirect, so that no window manager places, frames or focuses it, with
// shapes that follow the island. Main thread only.
#pragma once

#include "VesloraLinux/X11/CompositorWatch.h"
#include "VesloraLinux/X11/X11Stacking.h"
#include "VesloraUI/Platform/Panel.h"

#include <QPointer>
#include <QQuickWindow>

#include <memory>
#include <optional>

namespace veslora {

/// How clicks beside the island reach what lies beneath the panel.
enum class PanelForm {
    shaped,    ///< the window keeps its size, and its input shape says what is the island's
    shrinking, ///< the window itself is no larger than the island, for Wayland desktops, which disregard
               ///< input shapes
};

class X11Panel final : public QObject, public Panel {
    Q_OBJECT

  public:
    /// Makes the window, hidden.
    X11Panel(X11Connection& connection, const X11Screens& screens, PanelForm form);
    ~X11Panel() override;
    X11Panel(const X11Panel&) = delete;
    X11Panel& operator=(const X11Panel&) = delete;

    void place(const ScreenInfo& screen, const Rect& frame) override;
    void setContent(QQuickItem* content) override;
    void setOutline(std::function<QPainterPath()> outline) override;
    void setZones(const PanelZones& zones) override;
    void orderFront() override;
    void orderOut() override;
    [[nodiscard]] QQuickWindow* window() const override { return m_window.get(); }

    [[nodiscard]] xcb_window_t nativeWindow() const { return static_cast<xcb_window_t>(m_window->winId()); }
    [[nodiscard]] const CompositorWatch& compositor() const { return m_compositor; }
    [[nodiscard]] const X11Stacking& stacking() const { return m_stacking; }
    [[nodiscard]] const std::optional<ScreenInfo>& screen() const { return m_screen; }
    /// Where the window lies, in points from the screen's top left corner.
    [[nodiscard]] const QRect& windowPlace() const { return m_place; }

  private:
    void describeWindow();
    void frameDrawn();
    void updateBounding();
    void updateInput();
    void updateWindow(const Rect& area);
    void layoutContent();
    [[nodiscard]] Rect neededArea() const;
    [[nodiscard]] Rect areaOfWindow() const;
    void fitWindow();

    X11Connection& m_connection;
    PanelForm m_form;
    CompositorWatch m_compositor;
    std::unique_ptr<QQuickWindow> m_window;
    X11Stacking m_stacking;
    QPointer<QQuickItem> m_content;
    std::function<QPainterPath()> m_outline;
    std::optional<ScreenInfo> m_screen;
    Rect m_frame;  ///< what the content fills, in the screen's space
    QRect m_place; ///< the window itself
    PanelZones m_zones;
    std::optional<QRegion> m_bounding; ///< absent while the window shows whole
    Task m_fitting;
};

} // namespace veslora
