// SPDX-License-Identifier: MIT
// Whether every letter of a text that was laid out can be seen where it is: by its glyphs, and by the
// pixels that they give. For the main thread.
#pragma once

#include "VesloraUI/Text/TextLines.h"

#include <QFont>
#include <QList>
#include <QString>

namespace veslora {

/// Why it can't, in the order in which it is looked for.
enum class TextFault {
    none,
    blank,          ///< there is no letter at all
    missingGlyph,   ///< no font has a glyph for it, so that a box or nothing is there
    merged,         ///< it shares a glyph with its neighbour
    reordered,      ///< it is left of the one before it
    markWithoutInk, ///< it has marks that change nothing, or too little
    withoutInk,     ///< its glyphs are blank
    outside,        ///< it leaves its line or the box
    covered,        ///< it lies on others
};

struct TextVerdict {
    TextFault fault = TextFault::none;
    QList<TextCluster>
        clusters; ///< those at fault: all that lack a glyph, otherwise the first that was found

    [[nodiscard]] bool isGood() const { return fault == TextFault::none; }
};

namespace TextJudge {

/// How far ink may rise above its line or fall below it, for stacked accents. A view must not clip it.
inline constexpr double slack = 2;

/// Judges the letters that are in the box's lines as they are painted with so many device pixels a point.
/// `text` and `font` are those that the lines were made of. It takes fractions of a millisecond for usual
/// texts.
[[nodiscard]] TextVerdict judged(const TextLines& lines, const QString& text, const QFont& font,
                                 double ratio);

} // namespace TextJudge

} // namespace veslora
