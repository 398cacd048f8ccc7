// SPDX-License-Identifier: MIT
// A text laid out so that all of it can be seen, or the proof that it can't. For the main thread.
#pragma once

#include "VesloraUI/Text/TextJudge.h"
#include "VesloraUI/Text/TextLines.h"

#include <QFont>
#include <QString>

namespace veslora {

struct TextProof {
    QString text;    ///< what is shown
    TextLines lines; ///< how it is shown
    bool isGood;     ///< whether that is all of the text, with every letter seen
    TextFault fault; ///< what was wrong with what was shown; none where the text was just too long
};

/// Lays a text out for `ratio` device pixels a point. Letters that no font has are spelled by their codes, as
/// in "⟨U+684C⟩". What goes beyond the bounds or the box is cut and ends in "…".
[[nodiscard]] TextProof proofOf(const QString& text, const QFont& font, const TextBox& box, double ratio);

} // namespace veslora
