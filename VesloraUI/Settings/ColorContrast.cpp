// SPDX-License-Identifier: MIT
#include "VesloraUI/Settings/ColorContrast.h"

#include "VesloraUI/Style/VesloraStyle.h"

#include <algorithm>
#include <cmath>

namespace veslora::ColorContrast {
namespace {

/// The light of a channel, which its value tells by a curve.
double light(double channel) {
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

/// As it will be drawn: of eight bits a channel.
QColor rounded(const QColor& color) {
    return {color.red(), color.green(), color.blue()};
}

} // namespace

double luminance(const QColor& color) {
    return 0.2126 * light(color.redF()) + 0.7152 * light(color.greenF()) + 0.0722 * light(color.blueF());
}

double ratio(const QColor& first, const QColor& second) {
    const auto [darker, lighter] = std::minmax({luminance(first), luminance(second)});
    return (lighter + 0.05) / (darker + 0.05);
}

QColor readable(const QColor& color, const QList<QColor>& grounds, double wanted) {
    if (grounds.isEmpty()) {
        return color;
    }
    // Between black and white of the same ratio to both.
    constexpr double middle = 0.179;
    const QColor end = luminance(grounds.first()) > middle ? Qt::black : Qt::white;
    constexpr int steps = 64;
    for (int step = 0; step < steps; ++step) {
        const QColor tried = rounded(VesloraStyle::blend(color, end, static_cast<double>(step) / steps));
        if (std::ranges::all_of(grounds,
                                [&](const QColor& ground) { return ratio(tried, ground) >= wanted; })) {
            return tried;
        }
    }
    return end;
}

} // namespace veslora::ColorContrast
