// SPDX-License-Identifier: MIT
#include "VesloraUI/Island/NotchPath.h"

namespace veslora {

namespace {

struct Drawing {
    QPainterPath path;

    void operator()(const MoveTo& command) { path.moveTo(command.to.x, command.to.y); }
    void operator()(const LineTo& command) { path.lineTo(command.to.x, command.to.y); }
    void operator()(const CurveTo& command) {
        path.quadTo(command.control.x, command.control.y, command.to.x, command.to.y);
    }
    void operator()(const ClosePath& /*command*/) { path.closeSubpath(); }
};

} // namespace

QPainterPath painterPath(const NotchShape& shape, const QRectF& frame) {
    Drawing drawing;
    for (const PathCommand& command : shape.pathIn({frame.x(), frame.y(), frame.width(), frame.height()})) {
        std::visit(drawing, command);
    }
    return drawing.path;
}

} // namespace veslora
