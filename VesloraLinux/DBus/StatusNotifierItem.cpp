// SPDX-License-Identifier: MIT
#include "VesloraLinux/DBus/StatusNotifierItem.h"

#include "VesloraUI/Platform/Logs.h"

#include <QFile>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <QtEndian>

namespace veslora {
namespace {

StatusIcon iconOf(QSvgRenderer& drawing, int size) {
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    drawing.render(&painter);
    painter.end();
    const QImage plain = image.convertToFormat(QImage::Format_ARGB32);
    const qsizetype rowLength = qsizetype{size} * 4;
    StatusIcon icon{size, size, QByteArray(rowLength * size, '\0')};
    for (int row = 0; row < size; ++row) {
        // The bus wants the bytes in one order on every machine.
        qToBigEndian<quint32>(plain.constScanLine(row), size, icon.bytes.data() + row * rowLength);
    }
    return icon;
}

StatusIcons iconsOf(const QString& symbol) {
    QFile file(QStringLiteral(":/symbols/%1.svg").arg(symbol));
    if (!file.open(QIODevice::ReadOnly)) {
        qCWarning(Logs::views, "can't read %s: %s", qUtf8Printable(file.fileName()),
                  qUtf8Printable(file.errorString()));
        return {};
    }
    QSvgRenderer drawing(file.readAll().replace("currentColor", "#a8a8a8"));
    StatusIcons icons;
    for (const int size : {16, 22, 24, 32, 48}) {
        icons.append(iconOf(drawing, size));
    }
    return icons;
}

} // namespace

void StatusNotifierItem::setTitle(const QString& title) {
    if (title != m_title) {
        m_title = title;
        emit NewTitle();
        emit NewToolTip();
    }
}

void StatusNotifierItem::setSymbol(const QString& symbol) {
    if (symbol != m_symbol) {
        m_symbol = symbol;
        m_icons = iconsOf(symbol);
        emit NewIcon();
    }
}

void StatusNotifierItem::ContextMenu(int, int) {}

void StatusNotifierItem::Activate(int, int) {
    emit activated();
}

void StatusNotifierItem::SecondaryActivate(int, int) {}

void StatusNotifierItem::Scroll(int, const QString&) {}

} // namespace veslora
