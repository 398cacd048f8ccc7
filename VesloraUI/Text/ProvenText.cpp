// SPDX-License-Identifier: MIT
#include "VesloraUI/Text/ProvenText.h"

#include "VesloraUI/Platform/Observable.h"

#include <QGuiApplication>
#include <QPainter>
#include <QQuickWindow>
#include <QSGImageNode>
#include <QSGTexture>

#include <cmath>
#include <utility>

namespace veslora {

namespace {

/// Device pixels round the box, for ink that rises above its line.
int marginAt(double ratio) {
    return static_cast<int>(std::ceil(TextJudge::slack * ratio));
}

// Where the picture lies, in points of the item. Its pixels fall on those of the screen, as long as the item
// is not drawn larger or smaller.
QRectF placeOf(const QImage& picture, const QQuickItem& item, double ratio) {
    const int margin = marginAt(ratio);
    const QPointF onScreen = item.mapToScene({0, 0}) * ratio;
    const QPointF corner = item.mapFromScene(QPointF(onScreen.toPoint() - QPoint(margin, margin)) / ratio);
    return {corner, QSizeF(picture.size()) / ratio};
}

} // namespace

ProvenText::ProvenText(QQuickItem* parent) : QQuickItem(parent) {
    setFlag(ItemHasContents);
    connect(this, &ProvenText::textChanged, this, &ProvenText::prove);
    connect(this, &ProvenText::fontChanged, this, &ProvenText::prove);
    connect(this, &ProvenText::colorChanged, this, &ProvenText::prove);
    connect(qGuiApp, &QGuiApplication::fontDatabaseChanged, this, &ProvenText::prove);
}

void ProvenText::setText(const QString& text) {
    assign(this, m_text, text, &ProvenText::textChanged);
}

void ProvenText::setFont(const QFont& font) {
    assign(this, m_font, font, &ProvenText::fontChanged);
}

void ProvenText::setColor(const QColor& color) {
    assign(this, m_color, color, &ProvenText::colorChanged);
}

void ProvenText::componentComplete() {
    QQuickItem::componentComplete();
    prove();
}

void ProvenText::geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) {
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.width() != oldGeometry.width()) {
        prove();
    } else {
        update(); // its place on the device's pixels is another
    }
}

void ProvenText::itemChange(ItemChange change, const ItemChangeData& data) {
    QQuickItem::itemChange(change, data);
    if (change == ItemSceneChange || change == ItemDevicePixelRatioHasChanged) {
        prove();
    }
}

/// What was proven holds no more, from now on; the rest is done once, however much changes at a time.
void ProvenText::prove() {
    setProof(false, m_shownText);
    polish();
}

void ProvenText::updatePolish() {
    if (!window() || width() <= 0) {
        return;
    }
    const double ratio = window()->effectiveDevicePixelRatio();
    const TextProof proof = proofOf(m_text, m_font, {.width = width()}, ratio);
    m_fault = proof.fault;
    paint(proof.lines, ratio);
    setProof(proof.isGood, proof.text);
}

void ProvenText::setProof(bool isProven, const QString& shownText) {
    if (m_isProven != isProven || m_shownText != shownText) {
        m_isProven = isProven;
        m_shownText = shownText;
        emit proofChanged();
    }
}

void ProvenText::paint(const TextLines& lines, double ratio) {
    const int margin = marginAt(ratio);
    const QSizeF box = QSizeF(lines.box().width, lines.box().height()) * ratio;
    m_picture =
        QImage(QSize(static_cast<int>(std::ceil(box.width())), static_cast<int>(std::ceil(box.height()))) +
                   2 * QSize(margin, margin),
               QImage::Format_ARGB32_Premultiplied);
    m_picture.fill(Qt::transparent);
    m_picture.setDevicePixelRatio(ratio);
    QPainter painter(&m_picture);
    painter.setPen(m_color);
    painter.translate(margin / ratio, margin / ratio);
    lines.paint(painter);
    m_isPictureNew = true;
    update();
}

QSGNode* ProvenText::updatePaintNode(QSGNode* node, UpdatePaintNodeData* /*data*/) {
    auto* image = static_cast<QSGImageNode*>(node);
    if (m_picture.isNull()) {
        delete image;
        return nullptr;
    }
    if (!image) {
        image = window()->createImageNode();
        image->setOwnsTexture(true);
        image->setFiltering(QSGTexture::Nearest);
    }
    if (std::exchange(m_isPictureNew, false) || !image->texture()) {
        image->setTexture(window()->createTextureFromImage(m_picture, QQuickWindow::TextureHasAlphaChannel));
        image->setSourceRect(QRectF({0, 0}, QSizeF(m_picture.size())));
    }
    image->setRect(placeOf(m_picture, *this, m_picture.devicePixelRatio()));
    return image;
}

} // namespace veslora
