// SPDX-License-Identifier: MIT
#include "VesloraUI/Text/TextInk.h"

#include <algorithm>
#include <cmath>

namespace veslora {

namespace {

/// Points round the box; the box itself begins on a whole device pixel, as it does on screen.
double marginAt(double ratio) {
    constexpr double atLeast = 14;
    return std::ceil(atLeast * ratio) / ratio;
}

/// Points by which ink may lie beyond its outline, since edges are smoothed and letters hinted.
constexpr double fringe = 1.5;

} // namespace

TextInk::TextInk(const TextBox& box, double ratio)
    : m_ratio(ratio), m_margin(marginAt(ratio)),
      m_scratch((QSizeF(box.width + 2 * m_margin, box.height() + 2 * m_margin) * ratio).toSize(),
                QImage::Format_ARGB32_Premultiplied),
      m_total(static_cast<std::size_t>(m_scratch.width()) * static_cast<std::size_t>(m_scratch.height())) {
    m_scratch.setDevicePixelRatio(ratio);
    m_scratch.fill(Qt::transparent);
    m_painter.begin(&m_scratch);
    m_painter.setPen(Qt::white);
}

void TextInk::add(const TextLines::Letter& letter) {
    Ink ink;
    ink.area = pixels(outlineOf(letter).adjusted(-fringe, -fringe, fringe, fringe));
    if (ink.area.isEmpty() || !m_scratch.rect().contains(ink.area)) {
        m_inks.emplace_back();
        return;
    }
    // What is counted is this letter's alone, even where the one before reached beyond its outline.
    m_painter.setCompositionMode(QPainter::CompositionMode_Source);
    m_painter.fillRect(QRectF(QPointF(ink.area.topLeft()) / m_ratio, QSizeF(ink.area.size()) / m_ratio),
                       Qt::transparent);
    m_painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    for (const QGlyphRun& run : letter.runs) {
        m_painter.drawGlyphRun({m_margin, m_margin}, run);
    }
    ink.alpha.reserve(static_cast<std::size_t>(ink.area.width()) *
                      static_cast<std::size_t>(ink.area.height()));
    for (int y = ink.area.top(); y <= ink.area.bottom(); ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(m_scratch.constScanLine(y));
        for (int x = ink.area.left(); x <= ink.area.right(); ++x) {
            const int alpha = qAlpha(row[x]);
            ink.alpha.push_back(static_cast<std::uint8_t>(alpha));
            ink.sum += alpha;
            m_total[index(x, y)] = m_total[index(x, y)] + static_cast<std::uint32_t>(alpha);
        }
    }
    m_inks.push_back(std::move(ink));
}

int TextInk::within(const Ink& ink, const QRectF& area) const {
    const QRect allowed = pixels(area);
    int sum = 0;
    auto alpha = ink.alpha.begin();
    for (int y = ink.area.top(); y <= ink.area.bottom(); ++y) {
        for (int x = ink.area.left(); x <= ink.area.right(); ++x, ++alpha) {
            sum += allowed.contains(x, y) ? *alpha : 0;
        }
    }
    return sum;
}

int TextInk::shared(const Ink& ink) const {
    int sum = 0;
    auto alpha = ink.alpha.begin();
    for (int y = ink.area.top(); y <= ink.area.bottom(); ++y) {
        for (int x = ink.area.left(); x <= ink.area.right(); ++x, ++alpha) {
            sum += static_cast<int>(std::min<std::uint32_t>(*alpha, m_total[index(x, y)] - *alpha));
        }
    }
    return sum;
}

QRectF TextInk::outlineOf(const TextLines::Letter& letter) {
    QRectF united;
    for (const QGlyphRun& run : letter.runs) {
        const QRawFont font = run.rawFont();
        const auto glyphs = run.glyphIndexes();
        const auto positions = run.positions();
        for (qsizetype i = 0; i < glyphs.size(); ++i) {
            const auto key = std::pair(font, glyphs[i]);
            auto known = m_outlines.constFind(key);
            if (known == m_outlines.constEnd()) {
                known = m_outlines.insert(key, font.boundingRect(glyphs[i]));
            }
            if (!known->isEmpty()) {
                united |= known->translated(positions[i]);
            }
        }
    }
    return united;
}

QRect TextInk::pixels(const QRectF& area) const {
    const QRectF moved = area.translated(m_margin, m_margin);
    return area.isEmpty() ? QRect()
                          : QRectF(moved.topLeft() * m_ratio, moved.size() * m_ratio).toAlignedRect();
}

std::size_t TextInk::index(int x, int y) const {
    return static_cast<std::size_t>(y) * static_cast<std::size_t>(m_scratch.width()) +
           static_cast<std::size_t>(x);
}

} // namespace veslora
