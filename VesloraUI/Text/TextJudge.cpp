// SPDX-License-Identifier: MIT
#include "VesloraUI/Text/TextJudge.h"

#include "VesloraUI/Text/MarkInk.h"
#include "VesloraUI/Text/TextInk.h"

#include <QHash>
#include <QRawFont>

#include <algorithm>

namespace veslora::TextJudge {

namespace {

using Letter = TextLines::Letter;

/// How far a letter's ink may lie beyond the left and the right edge.
constexpr double sideSlack = 1;
/// Of a letter's ink, so much must lie in its line, and so much at most on the ink of others.
constexpr double leastInside = 0.9;
constexpr double mostShared = 0.25;

// Tells whether a font is one. Where no font has the shapes of a script like Devanagari, Qt draws boxes by an
// engine that seems to be a font and gives every letter the glyph 1. No real font is without the table
// "maxp". (To ask that engine for its name would crash.)
class Fonts {
  public:
    bool isReal(const QRawFont& font) {
        const auto known = m_known.constFind(font);
        return known != m_known.constEnd()
                   ? *known
                   : *m_known.insert(font, font.isValid() && !font.fontTable("maxp").isEmpty());
    }

  private:
    QHash<QRawFont, bool> m_known;
};

bool hasGlyphs(const Letter& letter, Fonts& fonts) {
    return !letter.runs.isEmpty() && std::ranges::all_of(letter.runs, [&fonts](const QGlyphRun& run) {
        return !run.glyphIndexes().contains(0U) && fonts.isReal(run.rawFont());
    });
}

QList<TextCluster> withoutGlyphs(const std::vector<Letter>& letters) {
    Fonts fonts;
    QList<TextCluster> missing;
    for (const Letter& letter : letters) {
        if (!hasGlyphs(letter, fonts)) {
            missing += letter.cluster;
        }
    }
    return missing;
}

bool isMerged(const Letter& letter) {
    return std::ranges::any_of(letter.runs,
                               [](const QGlyphRun& run) { return run.flags() & QGlyphRun::SplitLigature; });
}

bool isReversed(const Letter& letter) {
    return std::ranges::any_of(letter.runs, &QGlyphRun::isRightToLeft);
}

// Where a letter's ink may lie: its line, and a little more.
QRectF lineArea(const Letter& letter, const TextBox& box) {
    return QRectF(0, letter.line * box.lineHeight, box.width, box.lineHeight)
        .adjusted(-sideSlack, -slack, sideSlack, slack);
}

TextFault faultOfInk(const Letter& letter, const Ink& ink, const TextInk& all, const TextBox& box,
                     double ratio) {
    if (ink.sum < leastInk * ratio * ratio) {
        return TextFault::withoutInk;
    }
    if (all.within(ink, lineArea(letter, box)) < leastInside * ink.sum) {
        return TextFault::outside;
    }
    return all.shared(ink) > mostShared * ink.sum ? TextFault::covered : TextFault::none;
}

bool isRightOf(const Letter& letter, const Ink& ink, const Letter& before, const Ink& inkBefore) {
    const auto middle = [](const QRect& area) { return area.left() + area.right(); };
    return letter.line > before.line ||
           (letter.line == before.line && middle(ink.area) > middle(inkBefore.area));
}

TextVerdict judgedByGlyphs(const std::vector<Letter>& letters) {
    if (letters.empty()) {
        return {TextFault::blank, {}};
    }
    if (const auto missing = withoutGlyphs(letters); !missing.isEmpty()) {
        return {TextFault::missingGlyph, missing};
    }
    for (const Letter& letter : letters) {
        if (isMerged(letter) || isReversed(letter)) {
            return {isMerged(letter) ? TextFault::merged : TextFault::reordered, {letter.cluster}};
        }
    }
    return {};
}

TextVerdict judgedByMarks(const std::vector<Letter>& letters, const QString& text, const QFont& font,
                          double ratio) {
    MarkInk marks(font, ratio);
    for (const Letter& letter : letters) {
        if (letter.cluster.scalars > 1 &&
            !marks.shows(text.mid(letter.cluster.from, letter.cluster.length))) {
            return {TextFault::markWithoutInk, {letter.cluster}};
        }
    }
    return {};
}

TextVerdict judgedByInk(const TextLines& lines, double ratio) {
    TextInk ink(lines.box(), ratio);
    for (const Letter& letter : lines.letters()) {
        ink.add(letter);
    }
    for (std::size_t i = 0; i < lines.letters().size(); ++i) {
        const Letter& letter = lines.letters()[i];
        TextFault fault = faultOfInk(letter, ink.inks()[i], ink, lines.box(), ratio);
        if (fault == TextFault::none && i > 0 &&
            !isRightOf(letter, ink.inks()[i], lines.letters()[i - 1], ink.inks()[i - 1])) {
            fault = TextFault::reordered;
        }
        if (fault != TextFault::none) {
            return {fault, {letter.cluster}};
        }
    }
    return {};
}

} // namespace

TextVerdict judged(const TextLines& lines, const QString& text, const QFont& font, double ratio) {
    TextVerdict verdict = judgedByGlyphs(lines.letters());
    if (verdict.isGood()) {
        verdict = judgedByMarks(lines.letters(), text, font, ratio);
    }
    return verdict.isGood() ? judgedByInk(lines, ratio) : verdict;
}

} // namespace veslora::TextJudge
