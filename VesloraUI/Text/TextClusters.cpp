// SPDX-License-Identifier: MIT
#include "VesloraUI/Text/TextClusters.h"

#include "VesloraCore/Text/Scalars.h"
#include "VesloraCore/Text/Scripts.h"

#include <QTextBoundaryFinder>

#include <algorithm>

namespace veslora::TextClusters {

namespace {

constexpr qsizetype mostUnits = 400;
constexpr int mostScalars = 4;
constexpr qsizetype mostScripts = 4;

// What is hidden was spelled long before; this is the second lock on that door, with the toolkit's own
// tables.
bool isShowable(char32_t scalar) {
    return !Scalars::isHidden(scalar) && QChar::unicodeVersion(scalar) != QChar::Unicode_Unassigned &&
           QChar::category(scalar) != QChar::Other_Format;
}

class Bounds {
  public:
    /// Whether the text may go on with this.
    bool admits(const QList<uint>& scalars) {
        return scalars.size() <= mostScalars && std::ranges::all_of(scalars, [this](uint scalar) {
                   return isShowable(scalar) && admitsScriptOf(scalar);
               });
    }

  private:
    bool admitsScriptOf(char32_t scalar) {
        const Scripts::Script script = Scripts::of(scalar);
        if (script > Scripts::Script::inherited && !m_scripts.contains(script)) {
            m_scripts += script;
        }
        return m_scripts.size() <= mostScripts;
    }

    QList<Scripts::Script> m_scripts;
};

// Some spacing marks (of Burmese) count as characters of their own, and yet are placed by the letter before
// them.
bool belongsToTheOneBefore(const QString& text, const QList<uint>& scalars,
                           const QList<TextCluster>& before) {
    return !before.isEmpty() && text[before.back().from] != u' ' && Scalars::isMark(scalars.front());
}

} // namespace

QList<TextCluster> bounded(const QString& text) {
    QList<TextCluster> clusters;
    Bounds bounds;
    // One unit more than may be used, and not a whole long text, is enough to tell where the last character
    // ends.
    const QString start = text.left(mostUnits + 1);
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, start);
    for (qsizetype from = 0, to = finder.toNextBoundary(); to > from && to <= mostUnits;
         from = to, to = finder.toNextBoundary()) {
        const auto scalars = QStringView(start).mid(from, to - from).toUcs4();
        TextCluster cluster{static_cast<int>(from), static_cast<int>(to - from),
                            static_cast<int>(scalars.size())};
        if (belongsToTheOneBefore(start, scalars, clusters)) {
            const TextCluster before = clusters.takeLast();
            cluster = {before.from, before.length + cluster.length, before.scalars + cluster.scalars};
        }
        if (!bounds.admits(scalars) || cluster.scalars > mostScalars) {
            break;
        }
        clusters += cluster;
    }
    return clusters;
}

bool areWhole(const QList<TextCluster>& clusters, const QString& text) {
    return clusters.isEmpty() ? text.isEmpty() : clusters.back().from + clusters.back().length == text.size();
}

} // namespace veslora::TextClusters
