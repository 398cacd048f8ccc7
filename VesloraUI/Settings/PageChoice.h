// SPDX-License-Identifier: MIT
// Which page of the settings window shows, and which ones lie beside it.
#pragma once

#include <QObject>
#include <QQmlEngine>

namespace veslora {

class PageChoice : public QObject {
    Q_OBJECT
    QML_ELEMENT
    /// How many pages there are.
    Q_PROPERTY(int count MEMBER m_count NOTIFY countChanged FINAL)
    /// Number of the page that shows, from 0. A number that no page has is not taken.
    Q_PROPERTY(int current READ current WRITE choose NOTIFY currentChanged FINAL)

  public:
    using QObject::QObject;

    [[nodiscard]] int current() const { return m_current; }
    Q_INVOKABLE void choose(int page);
    /// Goes on by so many pages, back for a negative number; behind the last comes the first.
    Q_INVOKABLE void step(int pages);

  signals:
    void countChanged();
    void currentChanged();

  private:
    int m_count = 0;
    int m_current = 0;
};

} // namespace veslora
