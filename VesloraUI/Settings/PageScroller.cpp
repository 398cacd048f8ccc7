// SPDX-License-Identifier: MIT
#include "VesloraUI/Settings/PageScroller.h"

#include <algorithm>

namespace veslora {

namespace {

/// Kept between a focused row and the view's edges.
constexpr double margin = 18;

QRectF onPage(const QQuickItem& item, const QQuickItem& page) {
    return item.mapRectToItem(&page, item.boundingRect());
}

} // namespace

void PageScroller::setView(QQuickItem* view) {
    if (m_view == view) {
        return;
    }
    m_view = view;
    if (view) {
        connect(view, &QQuickItem::windowChanged, this, &PageScroller::followWindow);
        followWindow(view->window());
    }
    emit viewChanged();
}

void PageScroller::followWindow(QQuickWindow* window) {
    disconnect(m_focusChanges);
    if (window) {
        m_focusChanges =
            connect(window, &QQuickWindow::activeFocusItemChanged, this, &PageScroller::showFocused);
    }
}

void PageScroller::showFocused() {
    // The window may outlive the view, and then still tell of its focus.
    const QQuickWindow* const window = m_view ? m_view->window() : nullptr;
    const QQuickItem* const item = window ? window->activeFocusItem() : nullptr;
    const auto* const page = item ? m_view->property("contentItem").value<QQuickItem*>() : nullptr;
    if (!page || !page->isAncestorOf(item) || item->property("focusReason") == Qt::MouseFocusReason) {
        return;
    }
    const double room = m_view->height() - 2 * margin;
    const QRectF row = onPage(*item->parentItem(), *page);
    const QRectF shown = row.height() <= room ? row : onPage(*item, *page);
    scrollTo(std::clamp(top(), std::min(shown.bottom() + margin - m_view->height(), shown.top() - margin),
                        shown.top() - margin));
}

void PageScroller::scroll(double heights) {
    scrollTo(top() + heights * m_view->height());
}

void PageScroller::scrollToTop() {
    scrollTo(0);
}

double PageScroller::top() const {
    return m_view->property("contentY").toDouble();
}

void PageScroller::scrollTo(double top) {
    const double lowest = m_view->property("contentHeight").toDouble() - m_view->height();
    m_view->setProperty("contentY", std::clamp(top, 0.0, std::max(lowest, 0.0)));
}

} // namespace veslora
