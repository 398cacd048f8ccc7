// SPDX-License-Identifier: MIT
// The island's outline in Qt's terms.
#pragma once

#include "VesloraCore/Island/NotchShape.h"

#include <QPainterPath>
#include <QRectF>

namespace veslora {

/// The path of `shape` in `frame`; origin at the top left.
[[nodiscard]] QPainterPath painterPath(const NotchShape& shape, const QRectF& frame);

} // namespace veslora
