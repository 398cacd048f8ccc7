// SPDX-License-Identifier: MIT
#include "VesloraUI/Text/TextProof.h"

#include <utility>

namespace veslora {

namespace {

QString codes(QStringView cluster) {
    constexpr int digits = 4;
    constexpr int hexadecimal = 16;
    QString made;
    for (const uint scalar : cluster.toUcs4()) {
        made += QStringLiteral("⟨U+%1⟩").arg(scalar, digits, hexadecimal, QLatin1Char('0')).toUpper();
    }
    return made;
}

// The box that stands for a missing glyph stands for a hundred thousand characters. A code stands for one.
QString withCodesFor(const QList<TextCluster>& missing, const QString& text) {
    QString made;
    int from = 0;
    for (const TextCluster& cluster : missing) {
        made += QStringView(text).mid(from, cluster.from - from);
        made += codes(QStringView(text).mid(cluster.from, cluster.length));
        from = cluster.from + cluster.length;
    }
    made += QStringView(text).mid(from);
    return made;
}

// As many of the first clusters as the box has room for, and an ellipsis.
TextProof cut(const QString& text, const QList<TextCluster>& clusters, const TextLines& lines,
              const QFont& font) {
    for (qsizetype count = lines.room();; --count) {
        const int end = count > 0 ? clusters[count - 1].from + clusters[count - 1].length : 0;
        const QString start = text.left(end) + u'…';
        const auto left = TextClusters::bounded(start);
        TextLines made(start, left, font, lines.box());
        if (count <= 0 || (made.isWhole() && TextClusters::areWhole(left, start))) {
            return {start, std::move(made), false, TextFault::none};
        }
    }
}

TextProof laidOut(const QString& text, const QFont& font, const TextBox& box, double ratio,
                  QList<TextCluster>& missing) {
    const auto clusters = TextClusters::bounded(text);
    TextLines lines(text, clusters, font, box);
    if (!lines.isWhole() || !TextClusters::areWhole(clusters, text)) {
        return cut(text, clusters, lines, font);
    }
    const TextVerdict verdict = TextJudge::judged(lines, text, font, ratio);
    if (verdict.fault == TextFault::missingGlyph) {
        missing = verdict.clusters;
    }
    return {text, std::move(lines), verdict.isGood(), verdict.fault};
}

} // namespace

TextProof proofOf(const QString& text, const QFont& font, const TextBox& box, double ratio) {
    QList<TextCluster> missing;
    TextProof proof = laidOut(text, font, box, ratio, missing);
    if (missing.isEmpty()) {
        return proof;
    }
    const QString spelled = withCodesFor(missing, text);
    return laidOut(spelled, font, box, ratio, missing);
}

} // namespace veslora
