// SPDX-License-Identifier: MIT
// What every key of the island does: it takes presses of the pointer and accessible actions, and hands them
// to a judge where it has one. How a key looks is for the view that is built on it. It never takes the focus,
// so no keystroke can reach it. Main thread only.
#pragma once

#include "VesloraUI/Style/PressJudge.h"

#include <QPointer>
#include <QQuickItem>

namespace veslora {

class KeyItem : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    /// The key's name, also where it shows a symbol.
    Q_PROPERTY(QString text MEMBER m_text NOTIFY textChanged FINAL)
    /// What the key is for, where its name does not say it.
    Q_PROPERTY(QString helpText READ helpText WRITE setHelpText NOTIFY helpTextChanged FINAL)
    /// Decides whether a press counts; every press does where there is none.
    Q_PROPERTY(veslora::PressJudge* judge READ judge WRITE setJudge NOTIFY judgeChanged FINAL)
    /// A button is held down on the key and would press it if it came up now.
    Q_PROPERTY(bool isPressed READ isPressed NOTIFY isPressedChanged FINAL)
    /// It shows what is chosen at present, as one of several keys or as a switch that is on.
    Q_PROPERTY(bool isSelected READ isSelected WRITE setSelected NOTIFY isSelectedChanged FINAL)
    /// The pointer rests on the key. Only known of a key with a help text.
    Q_PROPERTY(bool isHovered MEMBER m_isHovered NOTIFY isHoveredChanged FINAL)

  public:
    explicit KeyItem(QQuickItem* parent = nullptr);

    [[nodiscard]] const QString& text() const { return m_text; }
    [[nodiscard]] const QString& helpText() const { return m_helpText; }
    void setHelpText(const QString& text);
    [[nodiscard]] PressJudge* judge() const { return m_judge; }
    void setJudge(PressJudge* judge);
    [[nodiscard]] bool isSelected() const { return m_isSelected; }
    void setSelected(bool isSelected);
    [[nodiscard]] bool isPressed() const { return m_isDown && m_isInside; }

    /// Presses the key without a pointer, as accessibility does. A disabled key does nothing.
    void act();

  signals:
    void textChanged();
    void helpTextChanged();
    void judgeChanged();
    void isPressedChanged();
    void isSelectedChanged();
    void isHoveredChanged();
    void clicked();

  protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    /// The second press of a double click was told already.
    void mouseDoubleClickEvent(QMouseEvent* /*event*/) override {}
    void mouseUngrabEvent() override;
    void hoverEnterEvent(QHoverEvent* event) override;
    void hoverLeaveEvent(QHoverEvent* event) override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;

  private:
    void setDown(bool isDown, bool isInside);

    QString m_text;
    QString m_helpText;
    QPointer<PressJudge> m_judge;
    bool m_isDown = false;
    bool m_isInside = false;
    bool m_isHovered = false;
    bool m_isSelected = false;
};

} // namespace veslora
