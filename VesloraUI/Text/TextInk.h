// SPDX-License-Identifier: MIT
// The pixels of each letter of a text alone, so that its own ink can be told from its neighbours', which no
// look at the finished picture can. For the main thread.
#pragma once

#include "VesloraUI/Text/TextLines.h"

#include <QHash>
#include <QImage>
#include <QPainter>
#include <QRawFont>

#include <cstdint>
#include <utility>
#include <vector>

namespace veslora {

/// The least ink of which can be said that it is seen, as a sum of alpha, by the square of device pixels a
/// point.
inline constexpr double leastInk = 96;

/// Some picture elements and how opaque each is, row by row.
struct Ink {
    QRect area;
    std::vector<std::uint8_t> alpha;
    int sum = 0;
};

/// Collects the ink of the letters of one text. All areas are in device pixels of a picture that is larger
/// than the text's box by a margin, to see what leaves it.
class TextInk {
  public:
    TextInk(const TextBox& box, double ratio);

    /// Draws a letter alone and takes its ink. Ink that would lie beyond the margin counts as none.
    void add(const TextLines::Letter& letter);

    /// One for each letter, in the order in which they were added.
    [[nodiscard]] const std::vector<Ink>& inks() const { return m_inks; }
    /// How much of a letter's ink lies within an area of the box, in points.
    [[nodiscard]] int within(const Ink& ink, const QRectF& area) const;
    /// How much of a letter's ink lies on that of others.
    [[nodiscard]] int shared(const Ink& ink) const;

  private:
    [[nodiscard]] QRectF outlineOf(const TextLines::Letter& letter);
    [[nodiscard]] QRect pixels(const QRectF& area) const;
    [[nodiscard]] std::size_t index(int x, int y) const;

    double m_ratio;
    double m_margin;
    QImage m_scratch;
    QPainter m_painter;
    std::vector<Ink> m_inks;
    std::vector<std::uint32_t> m_total; ///< the ink of all letters, by picture element
    /// A glyph's outline costs 0.05 ms in a font of bitmaps, which draws it for that.
    QHash<std::pair<QRawFont, quint32>, QRectF> m_outlines;
};

} // namespace veslora
