// SPDX-License-Identifier: MIT
// A text laid out into a few lines, from left to right in the order of its characters, with the glyphs of
// each of them at hand. What is painted are these glyphs and no others, so that a judgement on them is one on
// the picture. For the main thread.
#pragma once

#include "VesloraUI/Text/TextClusters.h"

#include <QFont>
#include <QGlyphRun>
#include <QList>
#include <QString>

#include <vector>

class QPainter;
class QTextLayout;

namespace veslora {

/// Where the text goes, in points.
struct TextBox {
    double width = 0;
    double lineHeight = 14;
    int lines = 2;

    [[nodiscard]] double height() const { return lineHeight * lines; }
};

class TextLines {
  public:
    /// A cluster that is no blank, where it is.
    struct Letter {
        TextCluster cluster;
        int line = 0;
        QList<QGlyphRun> runs; ///< empty where no font has anything for it
    };

    /// `clusters` are those of the text, within the bounds; it ends where they do.
    TextLines(const QString& text, QList<TextCluster> clusters, const QFont& font, const TextBox& box);

    [[nodiscard]] const TextBox& box() const { return m_box; }
    [[nodiscard]] const std::vector<Letter>& letters() const { return m_letters; }
    /// How many of the clusters are in the box's lines, from the first on.
    [[nodiscard]] qsizetype room() const { return m_room; }
    /// Whether all of them do.
    [[nodiscard]] bool isWhole() const { return m_room == m_clusters.size(); }

    /// Paints the letters in the painter's colour; the box's top left corner lies at the painter's origin.
    void paint(QPainter& painter) const;

  private:
    void readLetters(const QTextLayout& layout, const QString& text);

    QList<TextCluster> m_clusters;
    TextBox m_box;
    std::vector<Letter> m_letters;
    qsizetype m_room = 0;
};

} // namespace veslora
