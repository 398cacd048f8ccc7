// SPDX-License-Identifier: MIT
#include "VesloraUI/Timer/RollingPresenter.h"

#include "VesloraCore/Timer/TimerFormat.h"

#include <algorithm>

namespace veslora {

void RollingPresenter::read() {
    const QString text = wanted();
    if (!show(m_text, text)) {
        return;
    }
    std::vector<RollingPiece> pieces;
    for (qsizetype index = 0; index < text.size(); ++index) {
        pieces.push_back(pieceAt(static_cast<int>(text.size() - 1 - index), text.at(index)));
    }
    m_pieces.assign(std::move(pieces));
}

RollingPiece RollingPresenter::pieceAt(int place, QChar character) const {
    const auto found = std::ranges::find(m_pieces.rows(), place, &RollingPiece::id);
    if (found == m_pieces.rows().end()) {
        return {place, character, {}, 0, character.isDigit()};
    }
    RollingPiece piece = *found;
    if (piece.text != character) {
        piece.former = piece.text;
        piece.text = character;
        ++piece.turns;
    }
    return piece;
}

void RollingTimePresenter::setRemaining(double remaining) {
    m_remaining = remaining;
    refresh();
}

QString RollingTimePresenter::wanted() const {
    return QString::fromStdString(TimerFormat::remaining(m_remaining));
}

void RollingNumberPresenter::setNumber(int number) {
    m_number = number;
    refresh();
}

QString RollingNumberPresenter::wanted() const {
    return QString::number(m_number);
}

} // namespace veslora
