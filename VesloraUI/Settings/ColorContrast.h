// SPDX-License-Identifier: MIT
// How well a colour can be told from its ground, by the measure of the web's accessibility guidelines.
#pragma once

#include <QColor>
#include <QList>

namespace veslora::ColorContrast {

/// How bright a colour is to the eye, from 0 for black to 1 for white. Its opacity counts for nothing.
[[nodiscard]] double luminance(const QColor& color);

/// From 1 for two colours of the same brightness to 21 for black and white; either may be the ground.
[[nodiscard]] double ratio(const QColor& first, const QColor& second);

/// The colour itself where it has at least that ratio to every one of the grounds, otherwise as little darker
/// as will do, or lighter on dark grounds; black or white where nothing does.
[[nodiscard]] QColor readable(const QColor& color, const QList<QColor>& grounds, double wanted);

} // namespace veslora::ColorContrast
