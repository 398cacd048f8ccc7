// SPDX-License-Identifier: MIT
#include "VesloraUI/Text/TextLines.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QTextCharFormat>
#include <QTextLayout>
#include <QTextOption>

#include <utility>

namespace veslora {

namespace {

/// Goes before the text and keeps all of it in its own order, whatever directions its letters have.
constexpr QChar leftToRightOverride(0x202D);
/// By so much are positions in the layout greater than those in the text.
constexpr int offset = 1;

bool isFlag(const QString& text, const TextCluster& cluster) {
    constexpr uint first = 0x1F1E6;
    constexpr uint last = 0x1F1FF;
    const uint scalar = QStringView(text).mid(cluster.from, cluster.length).toUcs4().front();
    return scalar >= first && scalar <= last;
}

// Letters alone are not shaped, so that no two become one ("->", "fi"). A letter with its marks must be, or
// they fall onto each other; each such cluster has a range of its own, so that it can't reach for its
// neighbours. A flag stays the two letters that it is written with: a font may have one picture for all that
// it does not know.
QList<QTextLayout::FormatRange> shapedRanges(const QString& text, const QList<TextCluster>& clusters,
                                             const QFont& font) {
    QFont shaped(font);
    shaped.setStyleStrategy(QFont::PreferDefault);
    QTextCharFormat format;
    format.setFont(shaped);
    QList<QTextLayout::FormatRange> ranges;
    for (const TextCluster& cluster : clusters) {
        if (cluster.scalars > 1 && !isFlag(text, cluster)) {
            ranges += {cluster.from + offset, cluster.length, format};
        }
    }
    return ranges;
}

QTextOption lineOption() {
    QTextOption option(Qt::AlignLeft | Qt::AlignAbsolute);
    option.setTextDirection(Qt::LeftToRight);
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    // As all other text of the views is measured.
    option.setUseDesignMetrics(true);
    return option;
}

// One line more than there is room for tells that the room is not enough. Each line's baseline is where the
// main font puts it: the tall letters of another font would push their line out of the box.
void breakIntoLines(QTextLayout& layout, const QFont& font, const TextBox& box) {
    const double baseline = QFontMetricsF(font).ascent();
    layout.beginLayout();
    for (int i = 0; i <= box.lines; ++i) {
        QTextLine line = layout.createLine();
        if (!line.isValid()) {
            break;
        }
        line.setLineWidth(box.width);
        line.setPosition({0, i * box.lineHeight + baseline - line.ascent()});
    }
    layout.endLayout();
}

} // namespace

TextLines::TextLines(const QString& text, QList<TextCluster> clusters, const QFont& font, const TextBox& box)
    : m_clusters(std::move(clusters)), m_box(box) {
    const int end = m_clusters.isEmpty() ? 0 : m_clusters.back().from + m_clusters.back().length;
    QFont plain(font);
    plain.setStyleStrategy(QFont::PreferNoShaping);
    QTextLayout layout(leftToRightOverride + text.left(end), plain);
    layout.setTextOption(lineOption());
    layout.setCacheEnabled(true);
    layout.setFormats(shapedRanges(text, m_clusters, font));
    breakIntoLines(layout, font, box);
    readLetters(layout, text);
}

void TextLines::readLetters(const QTextLayout& layout, const QString& text) {
    m_letters.reserve(static_cast<std::size_t>(m_clusters.size()));
    for (const TextCluster& cluster : m_clusters) {
        const QTextLine line = layout.lineForTextPosition(cluster.from + offset);
        if (!line.isValid() || line.lineNumber() >= m_box.lines) {
            return;
        }
        ++m_room;
        if (cluster.length > 1 || text[cluster.from] != u' ') {
            m_letters.push_back(
                {cluster, line.lineNumber(), line.glyphRuns(cluster.from + offset, cluster.length)});
        }
    }
}

void TextLines::paint(QPainter& painter) const {
    for (const Letter& letter : m_letters) {
        for (const QGlyphRun& run : letter.runs) {
            painter.drawGlyphRun({0, 0}, run);
        }
    }
}

} // namespace veslora
