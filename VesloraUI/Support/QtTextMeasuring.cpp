// SPDX-License-Identifier: MIT
#include "VesloraUI/Support/QtTextMeasuring.h"

#include "VesloraUI/Style/VesloraStyle.h"

#include <QFont>
#include <QFontMetricsF>

namespace veslora {

double QtTextMeasuring::wingTextWidth(const std::string& text) const {
    constexpr int wingSize = 12;
    QFont font(VesloraStyle::monospacedFont());
    font.setPixelSize(wingSize);
    font.setWeight(QFont::DemiBold);
    return QFontMetricsF(font).horizontalAdvance(QString::fromStdString(text));
}

} // namespace veslora
