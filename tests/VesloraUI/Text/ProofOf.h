// SPDX-License-Identifier: MIT
// A text laid out and judged as an alert does it.
#pragma once

#include "VesloraCore/Agents/ClaudeRequestText.h"
#include "VesloraUI/Style/VesloraStyle.h"
#include "VesloraUI/Text/TextProof.h"

#include <string>

namespace veslora::test {

inline constexpr double alertWidth = 472;

inline QFont alertFont() {
    constexpr int size = 11;
    QFont font(VesloraStyle::systemFont());
    font.setPixelSize(size);
    font.setWeight(QFont::Medium);
    return font;
}

/// Of a text that Core has spelled.
inline TextProof proofOfSpelled(const QString& text, double ratio = 1) {
    return proofOf(text, alertFont(), {.width = alertWidth}, ratio);
}

/// Of a text as it came.
inline TextProof proofOfRequest(const std::string& text, double ratio = 1) {
    const auto display = ClaudeRequestText::display(text);
    TextProof proof = proofOfSpelled(QString::fromStdString(display.text), ratio);
    proof.isGood &= display.isComplete;
    return proof;
}

} // namespace veslora::test
