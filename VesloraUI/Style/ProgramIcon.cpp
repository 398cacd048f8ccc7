// SPDX-License-Identifier: MIT
#include "VesloraUI/Style/ProgramIcon.h"

#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

namespace veslora {

QIcon programIcon() {
    QSvgRenderer renderer(QStringLiteral(":/icons/org.veslora.Veslora.svg"));
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64}) {
        QPixmap pixmap(size, size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        renderer.render(&painter);
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

} // namespace veslora
