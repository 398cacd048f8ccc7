// SPDX-License-Identifier: MIT
#include "VesloraLinux/X11/X11Panel.h"

#include "VesloraLinux/X11/PanelPlacement.h"
#include "VesloraLinux/X11/X11Shape.h"
#include "VesloraUI/Platform/Logs.h"

#include <QGuiApplication>
#include <QQuickItem>
#include <QScreen>

namespace veslora {
namespace {

/// Qt's own connection: what is asked of a window goes the way of what Qt draws into it, and so stays in
/// order.
xcb_connection_t* connectionOfQt() {
    return qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
}

std::unique_ptr<QQuickWindow> makeWindow() {
    auto window = std::make_unique<QQuickWindow>();
    // For screen readers; nobody else sees it.
    window->setTitle(QStringLiteral("Veslora"));
    QSurfaceFormat format = window->format();
    format.setAlphaBufferSize(8);
    window->setFormat(format);
    window->setColor(Qt::transparent);
    window->setFlags(Qt::FramelessWindowHint | Qt::BypassWindowManagerHint | Qt::WindowStaysOnTopHint |
                     Qt::WindowDoesNotAcceptFocus | Qt::NoDropShadowWindowHint);
    window->create();
    return window;
}

QScreen* screenNamed(const std::string& name) {
    for (QScreen* const screen : QGuiApplication::screens()) {
        if (screen->name().toStdString() == name) {
            return screen;
        }
    }
    return nullptr;
}

} // namespace

X11Panel::X11Panel(X11Connection& connection, const X11Screens& screens, PanelForm form)
    : m_connection(connection), m_form(form), m_compositor(connection), m_window(makeWindow()),
      m_stacking(connection, screens, nativeWindow()) {
    describeWindow();
    X11Shape::setInput(connectionOfQt(), nativeWindow(), {});
    connect(&m_compositor, &CompositorWatch::changed, this, [this] {
        updateBounding();
        m_window->requestUpdate();
    });
    // Before the frame's pixels are shown, so that what grows is never cut off and what shrinks leaves no
    // black.
    connect(m_window.get(), &QQuickWindow::afterRendering, this, &X11Panel::frameDrawn);
}

X11Panel::~X11Panel() {
    setContent(nullptr);
}

/// Tells compositors that this is part of the desktop: they then neither blur nor shade all of its clear
/// rectangle.
void X11Panel::describeWindow() {
    const xcb_atom_t type = m_connection.atom("_NET_WM_WINDOW_TYPE_DOCK");
    xcb_change_property(connectionOfQt(), XCB_PROP_MODE_REPLACE, nativeWindow(),
                        m_connection.atom("_NET_WM_WINDOW_TYPE"), XCB_ATOM_ATOM, 32, 1, &type);
    const std::uint32_t noShadow = 0;
    xcb_change_property(connectionOfQt(), XCB_PROP_MODE_REPLACE, nativeWindow(),
                        m_connection.atom("_COMPTON_SHADOW"), XCB_ATOM_CARDINAL, 32, 1, &noShadow);
}

void X11Panel::place(const ScreenInfo& screen, const Rect& frame) {
    m_screen = screen;
    m_frame = frame;
    m_place = {};
    updateWindow(m_form == PanelForm::shaped ? frame : neededArea());
}

void X11Panel::setContent(QQuickItem* content) {
    if (m_content && m_content != content) {
        m_content->setParentItem(nullptr);
    }
    m_content = content;
    if (m_content) {
        m_content->setParentItem(m_window->contentItem());
        layoutContent();
    }
}

void X11Panel::setOutline(std::function<QPainterPath()> outline) {
    m_outline = std::move(outline);
    updateBounding();
}

void X11Panel::setZones(const PanelZones& zones) {
    m_zones = zones;
    if (m_form == PanelForm::shrinking && m_screen) {
        // Grown at once, so that what opens has room; shrunk only when the picture has followed.
        updateWindow(PanelPlacement::boundsOf({neededArea(), areaOfWindow()}));
        m_window->requestUpdate();
    }
    updateInput();
}

void X11Panel::orderFront() {
    m_window->show();
    m_stacking.setShown(true);
}

void X11Panel::orderOut() {
    m_stacking.setShown(false);
    m_window->hide();
}

void X11Panel::updateWindow(const Rect& area) {
    const QRect place = PanelPlacement::windowFor(*m_screen, area);
    QScreen* const screen = screenNamed(m_screen->name);
    if (screen == nullptr) {
        qCWarning(Logs::x11, "the panel stays where it is: no screen is called %s", m_screen->name.c_str());
        return;
    }
    if (place != m_place) {
        m_place = place;
        m_window->setScreen(screen);
        m_window->setGeometry(place.translated(screen->geometry().topLeft()));
    }
    layoutContent();
    updateInput();
    updateBounding();
}

void X11Panel::layoutContent() {
    if (m_content && m_screen) {
        m_content->setPosition(PanelPlacement::contentPlace(*m_screen, m_frame, m_place));
        m_content->setSize({m_frame.width, m_frame.height});
    }
}

void X11Panel::updateInput() {
    if (!m_screen) {
        return;
    }
    std::vector<Rect> zones = m_zones.clicks;
    if (m_form == PanelForm::shrinking) {
        // The pointer is known here only from what the window itself is told.
        zones.insert(zones.end(), m_zones.hover.begin(), m_zones.hover.end());
    }
    X11Shape::setInput(connectionOfQt(), nativeWindow(),
                       PanelPlacement::nativeRegion(*m_screen, zones, m_place));
}

void X11Panel::updateBounding() {
    // A Wayland compositor always blends, whatever it says to X programs.
    const bool isBlended = m_form == PanelForm::shrinking || m_compositor.isComposited();
    if (isBlended || !m_outline || !m_screen) {
        if (std::exchange(m_bounding, std::nullopt)) {
            X11Shape::resetBounding(connectionOfQt(), nativeWindow());
        }
        return;
    }
    const QPointF content = PanelPlacement::contentPlace(*m_screen, m_frame, m_place);
    const QRegion region = PanelPlacement::nativeOutline(m_outline(), content, m_screen->scale);
    if (m_bounding != region) {
        m_bounding = region;
        X11Shape::setBounding(connectionOfQt(), nativeWindow(), region);
    }
}

void X11Panel::frameDrawn() {
    updateBounding();
    if (m_form == PanelForm::shrinking && m_screen) {
        fitWindow();
    }
}

/// Lets a shrinking window follow the picture: at once where it would be cut off, else when it has come to
/// rest.
void X11Panel::fitWindow() {
    const QRect needed = PanelPlacement::windowFor(*m_screen, neededArea());
    if (needed == m_place) {
        m_fitting.cancel();
        return;
    }
    constexpr double rest = 0.1;
    m_fitting = m_connection.scheduler().after(m_place.contains(needed) ? rest : 0,
                                               [this] { updateWindow(neededArea()); });
}

/// What a shrinking window has to hold: everything that reacts, everything drawn, and the shadow of an open
/// island.
Rect X11Panel::neededArea() const {
    std::vector<Rect> parts = m_zones.clicks;
    parts.insert(parts.end(), m_zones.hover.begin(), m_zones.hover.end());
    if (const QPainterPath outline = m_outline ? m_outline() : QPainterPath(); !outline.isEmpty()) {
        parts.push_back(PanelPlacement::outlineBounds(outline, m_frame));
    }
    if (parts.empty()) {
        return {m_frame.midX(), m_frame.maxY() - 1, 1, 1};
    }
    Rect area = PanelPlacement::boundsOf(parts);
    if (!m_zones.clicks.empty()) {
        area = area.grownBy(NotchGeometry::shadowMargin, NotchGeometry::shadowMargin);
    }
    return PanelPlacement::intersection(area, m_frame);
}

Rect X11Panel::areaOfWindow() const {
    const double bottom = m_screen->metrics.frame.height - m_place.y() - m_place.height();
    return {static_cast<double>(m_place.x()), bottom, static_cast<double>(m_place.width()),
            static_cast<double>(m_place.height())};
}

} // namespace veslora
