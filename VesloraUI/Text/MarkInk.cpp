// SPDX-License-Identifier: MIT
#include "VesloraUI/Text/MarkInk.h"

#include "VesloraUI/Text/TextInk.h"
#include "VesloraUI/Text/TextLines.h"

#include <QPainter>

#include <algorithm>
#include <cstdlib>

namespace veslora {

namespace {

/// Points of the picture of one cluster, and where in it the cluster's line begins. A wide one is cut, and
/// then judged by less ink than it has.
constexpr QSizeF size(56, 20);
constexpr QPointF origin(14, 3);
/// Of what a mark changes on the bare letter, it must change so much among other marks.
constexpr double leastOwn = 0.5;

// By colour too: a skin tone changes nothing else.
int differenceOf(QRgb one, QRgb other) {
    return std::max({std::abs(qAlpha(one) - qAlpha(other)), std::abs(qRed(one) - qRed(other)),
                     std::abs(qGreen(one) - qGreen(other)), std::abs(qBlue(one) - qBlue(other))});
}

} // namespace

bool MarkInk::shows(const QString& cluster) {
    const auto known = m_known.constFind(cluster);
    return known != m_known.constEnd() ? *known : *m_known.insert(cluster, showsAll(cluster));
}

bool MarkInk::showsAll(const QString& cluster) {
    const QList<uint> scalars = cluster.toUcs4();
    const auto text = [](const QList<uint>& of) {
        QString made;
        for (const uint scalar : of) {
            made += QChar::fromUcs4(scalar);
        }
        return made;
    };
    const QString bare = text(scalars.first(1));
    for (qsizetype i = 1; i < scalars.size(); ++i) {
        auto others = scalars;
        others.removeAt(i);
        const int here = difference(cluster, text(others));
        const int alone = difference(bare, text({scalars.front(), scalars[i]}));
        if (here < leastInk * m_ratio * m_ratio || here < leastOwn * alone) {
            return false;
        }
    }
    return true;
}

const QImage& MarkInk::picture(const QString& text) {
    if (const auto known = m_pictures.constFind(text); known != m_pictures.constEnd()) {
        return *known;
    }
    QImage image((size * m_ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(m_ratio);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setPen(Qt::white);
    painter.translate(origin);
    TextLines(text, TextClusters::bounded(text), m_font, {.width = 1000, .lines = 1}).paint(painter);
    painter.end();
    return *m_pictures.insert(text, image);
}

int MarkInk::difference(const QString& one, const QString& other) {
    const QImage first = picture(one);
    const QImage second = picture(other);
    int sum = 0;
    for (int y = 0; y < first.height(); ++y) {
        const auto* left = reinterpret_cast<const QRgb*>(first.constScanLine(y));
        const auto* right = reinterpret_cast<const QRgb*>(second.constScanLine(y));
        for (int x = 0; x < first.width(); ++x) {
            sum += differenceOf(left[x], right[x]);
        }
    }
    return sum;
}

} // namespace veslora
