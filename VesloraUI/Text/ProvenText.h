// SPDX-License-Identifier: MIT
// Two lines of text of which the item itself can tell whether everything in them is to be seen. It is
// from left to right in the order of its characters. It is laid out, judged and painted once, before the next
// frame, whenever anything about it changes.
#pragma once

#include "VesloraUI/Text/TextProof.h"

#include <QColor>
#include <QFont>
#include <QImage>
#include <QQmlEngine>
#include <QQuickItem>
#include <QString>

namespace veslora {

class ProvenText : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    /// Text as Core has spelled it.
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged FINAL)
    Q_PROPERTY(QFont font READ font WRITE setFont NOTIFY fontChanged FINAL)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged FINAL)
    /// Whether all of the text is shown, and each letter has ink of its own inside the box. False until that
    /// is known.
    Q_PROPERTY(bool isProven READ isProven NOTIFY proofChanged FINAL)
    /// The text as it is shown: letters that no font has by their codes, and what is too long cut.
    Q_PROPERTY(QString shownText READ shownText NOTIFY proofChanged FINAL)

  public:
    explicit ProvenText(QQuickItem* parent = nullptr);

    [[nodiscard]] QString text() const { return m_text; }
    void setText(const QString& text);
    [[nodiscard]] QFont font() const { return m_font; }
    void setFont(const QFont& font);
    [[nodiscard]] QColor color() const { return m_color; }
    void setColor(const QColor& color);

    [[nodiscard]] bool isProven() const { return m_isProven; }
    [[nodiscard]] QString shownText() const { return m_shownText; }
    /// Why the text as it is shown is not proven; for tests.
    [[nodiscard]] TextFault fault() const { return m_fault; }

  signals:
    void textChanged();
    void fontChanged();
    void colorChanged();
    void proofChanged();

  protected:
    void componentComplete() override;
    void geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) override;
    void itemChange(ItemChange change, const ItemChangeData& data) override;
    void updatePolish() override;
    QSGNode* updatePaintNode(QSGNode* node, UpdatePaintNodeData* data) override;

  private:
    void prove();
    void setProof(bool isProven, const QString& shownText);
    void paint(const TextLines& lines, double ratio);

    QString m_text;
    QFont m_font;
    QColor m_color;
    bool m_isProven = false;
    QString m_shownText;
    TextFault m_fault = TextFault::none;
    QImage m_picture;
    bool m_isPictureNew = false;
};

} // namespace veslora
