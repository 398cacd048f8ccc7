// SPDX-License-Identifier: MIT
#include "VesloraUI/Widgets/ClockViewPresenter.h"

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
    refresh();
}

void ClockViewPresenter::setAvailableWidth(double width) {
    m_availableWidth = width;
    refresh();
}

void ClockViewPresenter::read() {
    const QString time = LocalTime::shortTime(m_date);
    if (time != m_shown.timeText) {
        m_pieces.assign(piecesOf(time));
        m_usualWidth = usualWidth(m_pieces.rows());
    }
    show(m_shown, {.dateText = LocalTime::shortDate(m_date), .timeText = time, .fontSize = fittingSize()});
}

int ClockViewPresenter::fittingSize() const {
    // A time without letters needs no room.
    const double needed = std::max(m_usualWidth, 1.0);
    return static_cast<int>(usualSize * std::clamp(m_availableWidth / needed, leastShare, 1.0));
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
