// SPDX-License-Identifier: MIT
#include "VesloraUI/LocalTime.h"

#include <QDateTime>
#include <QLocale>

#include <algorithm>

namespace veslora {

QString shortTime(Timestamp time) {
    constexpr double farthest = 250'000'000'000;
    const double held = std::clamp(time, -farthest, farthest);
    const QLocale locale;
    // The one locale whose short form has seconds is the one that stands for having none.
    const QString format =
        locale.language() == QLocale::C ? QStringLiteral("HH:mm") : locale.timeFormat(QLocale::ShortFormat);
    return locale.toString(QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(held * 1000)).time(), format);
}

} // namespace veslora
