// SPDX-License-Identifier: MIT
#include "VesloraUI/Widgets/ClockViewPresenter.h"

#include "VesloraUI/Platform/Observable.h"
#include "VesloraUI/Style/VesloraStyle.h"
#include "VesloraUI/Support/LocalTime.h"

#include <QFontMetricsF>

#include <algorithm>

namespace veslora {

namespace {

/// Points that a time takes at its usual size.
double usualWidth(const std::vector<ClockPiece>& pieces) {
    QFont font(VesloraStyle::systemFont());
    font.setPixelSize(ClockViewPresenter::usualSize);
    font.setWeight(QFont::Medium);
    const QFontMetricsF metrics(font);
    double width = 0;
    for (const ClockPiece& piece : pieces) {
        width += piece.isDigit ? ClockViewPresenter::digitWidth * ClockViewPresenter::usualSize
                               : metrics.horizontalAdvance(piece.text);
    }
    return width;
}

} // namespace

void ClockViewPresenter::setDate(double date) {
    m_date = date;
    assign(this, m_dateText, LocalTime::shortDate(date), &ClockViewPresenter::dateTextChanged);
    if (assign(this, m_timeText, LocalTime::shortTime(date), &ClockViewPresenter::timeTextChanged)) {
        m_pieces.assign(piecesOf(m_timeText));
        fit();
    }
}

void ClockViewPresenter::setAvailableWidth(double width) {
    m_availableWidth = width;
    fit();
}

void ClockViewPresenter::fit() {
    // A time without letters, which there is before the first, needs no room.
    const double needed = std::max(usualWidth(m_pieces.rows()), 1.0);
    const int size = static_cast<int>(usualSize * std::clamp(m_availableWidth / needed, leastShare, 1.0));
    assign(this, m_fontSize, size, &ClockViewPresenter::fontSizeChanged);
}

std::vector<ClockPiece> ClockViewPresenter::piecesOf(const QString& time) {
    if (time.isRightToLeft()) {
        return {{0, time, false}};
    }
    std::vector<ClockPiece> pieces;
    for (const QChar character : time) {
        const bool isDigit = character.isDigit();
        if (isDigit || pieces.empty() || pieces.back().isDigit) {
            pieces.push_back({static_cast<int>(pieces.size()), {}, isDigit});
        }
        pieces.back().text += character;
    }
    return pieces;
}

} // namespace veslora
