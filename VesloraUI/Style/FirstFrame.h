// SPDX-License-Identifier: MIT
// Tells whether an item was on screen already. What comes into view is at its value; only what changes
// while somebody may see it moves there.
#pragma once

#include <QObject>
#include <QPointer>
#include <QQmlEngine>
#include <QQuickItem>

namespace veslora {

class FirstFrame : public QObject, public QQmlParserStatus {
    Q_OBJECT
    QML_ELEMENT
    Q_INTERFACES(QQmlParserStatus)
    /// The one to look at; the item that this is declared in where none is given.
    Q_PROPERTY(QQuickItem* item READ item WRITE setItem NOTIFY itemChanged FINAL)
    /// A frame that shows the item was handed over since it became visible.
    Q_PROPERTY(bool hasPassed READ hasPassed NOTIFY hasPassedChanged FINAL)

  public:
    explicit FirstFrame(QObject* parent = nullptr) : QObject(parent) {}

    [[nodiscard]] QQuickItem* item() const { return m_item; }
    void setItem(QQuickItem* item);
    [[nodiscard]] bool hasPassed() const { return m_hasPassed; }

    void classBegin() override {}
    void componentComplete() override;

  signals:
    void itemChanged();
    void hasPassedChanged();

  private:
    void update();

    QPointer<QQuickItem> m_item;
    bool m_hasPassed = false;
    QMetaObject::Connection m_frame; ///< only until it has come
};

} // namespace veslora
