// SPDX-License-Identifier: MIT
// Scrolls a page that is taller than its window: to what the keyboard focuses, and by the keyboard itself.
#pragma once

#include <QObject>
#include <QPointer>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>

namespace veslora {

class PageScroller : public QObject {
    Q_OBJECT
    QML_ELEMENT
    /// The Flickable that holds the page.
    Q_PROPERTY(QQuickItem* view READ view WRITE setView NOTIFY viewChanged FINAL)

  public:
    using QObject::QObject;

    [[nodiscard]] QQuickItem* view() const { return m_view; }
    void setView(QQuickItem* view);

    /// Moves the page by so many heights of the view, down for a positive number, no farther than its ends.
    Q_INVOKABLE void scroll(double heights);
    Q_INVOKABLE void scrollToTop();

  signals:
    void viewChanged();

  private:
    void followWindow(QQuickWindow* window);
    /// Brings what has got the focus into sight, with its whole row where that fits, unless a pointer focused
    /// it: the page must not move away below a press.
    void showFocused();
    /// In points of the page, at the view's top edge.
    void scrollTo(double top);
    [[nodiscard]] double top() const;

    QPointer<QQuickItem> m_view;
    QMetaObject::Connection m_focusChanges;
};

} // namespace veslora
